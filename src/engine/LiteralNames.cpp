#include "engine/LiteralNames.h"

#include "engine/PathText.h"

namespace LiteralNames {
namespace {

bool hasWildcard(const QString& name) {
  return name.contains(u'*') || name.contains(u'?');
}

bool startsWithAny(const QString& name, QStringView marks) {
  return !name.isEmpty() && marks.contains(name.front());
}

}  // namespace

QString fileArgument(const QString& name) {
  return startsWithAny(name, u"-@!") ? QStringLiteral("./") + name : name;
}

bool sevenZipReadsAsPattern(const QString& name) {
  return hasWildcard(name) || name.startsWith(u'@');
}

QStringList forSevenZip(const QStringList& leading, const QStringList& names,
                        const QStringList& trailing) {
  const bool patterns = std::any_of(names.cbegin(), names.cend(), sevenZipReadsAsPattern);
  const bool switchLike = std::any_of(
      names.cbegin(), names.cend(), [](const QString& name) { return startsWithAny(name, u"-@"); });
  QStringList arguments = leading;
  if (patterns && !arguments.isEmpty())
    arguments.insert(1, QStringLiteral("-spd"));
  if (!switchLike)
    return arguments + names + trailing;
  return arguments + trailing + QStringList{QStringLiteral("--")} + names;
}

QString firstUnsafe(const QString& program, const QStringList& names) {
  const QString tool = PathText::lastPathComponent(program);
  // rar reads "@name" as a list file, arj reads "!name" as one.
  QStringView listMarks;
  if (tool == u"r" || tool == u"rar" || tool == u"unrar")
    listMarks = u"@";
  else if (tool == u"arj")
    listMarks = u"!";
  else
    return {};
  for (const QString& name : names) {
    if (hasWildcard(name) || startsWithAny(name, listMarks))
      return name;
  }
  return {};
}

Refusal refusalOf(const QString& name) {
  return {QStringLiteral("Name not supported"),
          QStringLiteral("The tool for this archive type would read the name \"%1\" as a pattern "
                         "or a list of names and could act on other files. Nothing was done.")
              .arg(name)};
}

}  // namespace LiteralNames
