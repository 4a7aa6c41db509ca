#pragma once

#include <QIcon>
#include <QString>

// Chooses the icon of a listing row from the entry's name.
class EntryIcons {
 public:
  virtual ~EntryIcons() = default;
  virtual QIcon setListViewIcon(const QString& name) = 0;
};

// For listings nobody looks at (the headless listing): no icon work at all.
class NoEntryIcons : public EntryIcons {
 public:
  QIcon setListViewIcon(const QString&) override { return {}; }
};
