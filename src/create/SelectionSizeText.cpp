#include "create/SelectionSizeText.h"

namespace SelectionSizeText {
namespace {

constexpr float kKilobyte = 1024.0f;
constexpr float kMegabyte = 1048576.0f;
constexpr float kGigabyte = 1073741824.0f;

QString printed(const char* format, float value) {
  return QString::asprintf(format, static_cast<double>(value));
}

QString folderKilobytes(float bytes, SelectionEntry entry) {
  const float kilobytes = bytes / kKilobyte;
  switch (entry) {
    case SelectionEntry::Dropped:
      return printed("%1.2f KB", kilobytes);
    case SelectionEntry::OpenPanel:
      return printed("%.2f KB", kilobytes);
    case SelectionEntry::AddFiles:
      return QString::asprintf("%d KB", static_cast<int>(kilobytes));
  }
  return {};
}

}  // namespace

// The dropped-files wording keeps its own "%1.2f" formats; they print as
// "%.2f" does.
QString folder(float bytes, SelectionEntry entry) {
  const bool dropped = entry == SelectionEntry::Dropped;
  if (bytes < kMegabyte)
    return folderKilobytes(bytes, entry);
  if (bytes < kGigabyte)
    return printed(dropped ? "%1.2f MB" : "%.2f MB", bytes / kMegabyte);
  return printed(dropped ? "%1.2f GB" : "%.2f GB", bytes / kGigabyte);
}

QString file(float bytes) {
  if (bytes < kMegabyte)
    return printed("%.2f KB", bytes / kKilobyte);
  return printed("%.2f MB", bytes / kMegabyte);
}

}  // namespace SelectionSizeText
