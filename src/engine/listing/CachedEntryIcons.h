#pragma once

#include "engine/listing/EntryIcons.h"

#include <QHash>

class Desktop;

// The icon of an entry: Quillet's application icon for anything inside or
// named like an application bundle (".app", any case), otherwise the
// desktop's icon for the name's extension, asked once per extension.
class CachedEntryIcons : public EntryIcons {
 public:
  explicit CachedEntryIcons(Desktop& desktop) : desktop_(desktop) {}
  QIcon setListViewIcon(const QString& name) override;

 private:
  Desktop& desktop_;
  QHash<QString, QIcon> byExtension_;
  QIcon application_;
};
