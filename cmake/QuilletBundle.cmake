# A program Quillet copies next to what it makes (the self-extracting stub,
# the restore program), assembled as its bundle under share/quillet in the
# build tree and in an installation alike: the program in Contents/MacOS,
# an empty Contents/Resources, the launcher and its desktop entry on top.
function(quillet_bundle target bundle launcher)
  set(in_build ${QUILLET_SHARE_IN_BUILD}/${bundle})
  set(installed ${CMAKE_INSTALL_DATADIR}/quillet/${bundle})
  set(launchers "${CMAKE_SOURCE_DIR}/resources/${bundle}/${launcher}"
                "${CMAKE_SOURCE_DIR}/resources/${bundle}/${launcher}.desktop")

  add_executable(${target} ${ARGN})
  target_include_directories(${target} PRIVATE ${CMAKE_SOURCE_DIR}/src)
  target_link_libraries(${target} PRIVATE Qt6::Core Qt6::Widgets)
  set_target_properties(${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${in_build}/Contents/MacOS)

  add_custom_target(${target}_bundle ALL
    COMMAND ${CMAKE_COMMAND} -E make_directory ${in_build}/Contents/Resources
    COMMAND ${CMAKE_COMMAND} -E copy_if_different ${launchers} ${in_build}
    DEPENDS ${launchers}
    VERBATIM)
  add_dependencies(${target}_bundle ${target})

  install(TARGETS ${target} RUNTIME DESTINATION ${installed}/Contents/MacOS)
  install(DIRECTORY DESTINATION ${installed}/Contents/Resources)
  install(PROGRAMS ${launchers} DESTINATION ${installed})
endfunction()
