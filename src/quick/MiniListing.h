#pragma once

#include "engine/listing/LhaListing.h"

#include <QIcon>
#include <QList>
#include <QString>

class EntryIcons;
class OutputLines;

// The mini browser's rows: only the entry names, with an icon each. Its
// line ranges are those of the main listing for the tool version that
// printed the output; the names are cut its own way (a rar name keeps its
// leading blank, an lha name keeps its folders). Output shorter than a
// range's tail gives no rows.
namespace MiniListing {

struct Row {
  QString fileName;  // as listed; the tools get it back as the entry's name
  QIcon fileIcon;
};

// The rows of a listing of an archive of this type; none for a type the
// browser does not list.
QList<Row> rows(const QString& type, const OutputLines& lines, LhaVersion lhaVersion,
                EntryIcons& icons);

}  // namespace MiniListing
