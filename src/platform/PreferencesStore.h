#pragma once

#include <QString>
#include <QStringList>

// The settings store: every value is a text under a fixed key, booleans
// are "YES" and "NO", and readers compare with "YES" exactly, so absence
// means off unless a key says otherwise.
namespace PreferencesStore {

QString text(const QString& key);
// Whether the key is stored at all, empty or not.
bool contains(const QString& key);
bool isYes(const QString& key);
void setText(const QString& key, const QString& value);
void setYes(const QString& key, bool yes);
QStringList list(const QString& key);
void setList(const QString& key, const QStringList& values);
// The key goes altogether, so that the file keeps no trace of it.
void remove(const QString& key);
// Only the user may read or write the store from now on (it may hold a
// password); later writes keep that.
void makePrivate();

inline const QString kAutoremoveMacosxFolder = QStringLiteral("autoremoveMACOSXfolder");
inline const QString kRecentDocuments = QStringLiteral("recentDocuments");

}  // namespace PreferencesStore
