#include "quick/MiniEntryIcons.h"

#include "platform/ResourceIcons.h"

#include <QList>
#include <QStringList>

namespace {

struct Rule {
  QStringList fragments;
  QString resource;
};

// "tar" has no dot: any name holding those three letters counts.
const QList<Rule>& table() {
  static const QList<Rule> rules = {
      {{".app"}, "application.png"},
      {{".png", ".jpg", ".tiff"}, "image.png"},
      {{".icns"}, "image.icns"},
      {{".zip", ".rar", ".7z", ".bz2", ".gz", "tar"}, "zip.icns"},
      {{".mp3", ".wav", ".flac", ".aac", ".ogg"}, "audio.png"},
  };
  return rules;
}

}  // namespace

QString MiniEntryIcons::resourceFor(const QString& name) {
  for (const Rule& rule : table()) {
    for (const QString& fragment : rule.fragments) {
      if (name.contains(fragment, Qt::CaseInsensitive))
        return rule.resource;
    }
  }
  return QStringLiteral("unknowntype.png");
}

QIcon MiniEntryIcons::setListViewIcon(const QString& name) {
  const QString resource = resourceFor(name);
  auto found = byResource_.constFind(resource);
  if (found == byResource_.cend())
    found = byResource_.insert(resource, ResourceIcons::named(resource));
  return *found;
}
