#pragma once

#include <QString>

// Gives a widget (or action) the object name that tests and style sheets
// find it by, and hands it back, so that it can be named where it is made.
template <typename Object>
Object* named(Object* object, const char* objectName) {
  object->setObjectName(QString::fromLatin1(objectName));
  return object;
}
