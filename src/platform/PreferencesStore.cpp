#include "platform/PreferencesStore.h"

#include <QFile>
#include <QSettings>

namespace PreferencesStore {
namespace {

QSettings& store() {
  thread_local QSettings settings(QStringLiteral("Quillet"), QStringLiteral("Quillet"));
  return settings;
}

}  // namespace

QString text(const QString& key) {
  store().sync();
  return store().value(key).toString();
}

bool contains(const QString& key) {
  store().sync();
  return store().contains(key);
}

bool isYes(const QString& key) {
  return text(key) == u"YES";
}

void setText(const QString& key, const QString& value) {
  store().setValue(key, value);
  store().sync();
}

void setYes(const QString& key, bool yes) {
  setText(key, yes ? QStringLiteral("YES") : QStringLiteral("NO"));
}

QStringList list(const QString& key) {
  store().sync();
  return store().value(key).toStringList();
}

void setList(const QString& key, const QStringList& values) {
  store().setValue(key, values);
  store().sync();
}

void remove(const QString& key) {
  store().remove(key);
  store().sync();
}

void makePrivate() {
  store().sync();
  QFile::setPermissions(store().fileName(), QFile::ReadOwner | QFile::WriteOwner);
}

}  // namespace PreferencesStore
