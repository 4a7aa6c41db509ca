#pragma once

#include "engine/listing/EntryIcons.h"

#include <QHash>

// The mini browser's own icons: a fixed table of name fragments instead of
// the desktop's icon for each type, so that a listing costs no lookups.
class MiniEntryIcons : public EntryIcons {
 public:
  // The image resource for a name: the first fragment that the name holds
  // anywhere, in any case, decides.
  static QString resourceFor(const QString& name);

  QIcon setListViewIcon(const QString& name) override;

 private:
  QHash<QString, QIcon> byResource_;
};
