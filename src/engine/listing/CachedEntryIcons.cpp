#include "engine/listing/CachedEntryIcons.h"

#include "engine/PathText.h"
#include "platform/Desktop.h"
#include "platform/ResourceIcons.h"

QIcon CachedEntryIcons::setListViewIcon(const QString& name) {
  if (name.contains(u".app", Qt::CaseInsensitive)) {
    if (application_.isNull())
      application_ = ResourceIcons::named(QStringLiteral("application.png"));
    return application_;
  }
  const QString extension = PathText::pathExtension(name);
  auto found = byExtension_.constFind(extension);
  if (found == byExtension_.cend())
    found = byExtension_.insert(extension, desktop_.iconForExtension(extension));
  return *found;
}
