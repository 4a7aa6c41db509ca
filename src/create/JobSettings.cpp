#include "create/JobSettings.h"

#include "platform/PreferencesStore.h"

#include <array>

namespace {

// For arj, ultra reuses high's switch; lha has only three steps.
const std::array<CompressionLevel, 6> kLevels = {{
    {"-mx0", "-m0", "-m0", "-o5", "Level: Store only | Speed: Fastest"},
    {"-mx1", "-m1", "-m1", "-o5", "Level: Lowest | Speed: Super fast"},
    {"-mx3", "-m2", "-m2", "-o5", "Level: Low | Speed: Fast"},
    {"-mx5", "-m3", "-m3", "-o6", "Level: Normal | Speed: Medium"},
    {"-mx7", "-m4", "-m4", "-o6", "Level: High | Speed: Slow"},
    {"-mx9", "-m5", "-m4", "-o7", "Level: Ultra | Speed: Slowest"},
}};

constexpr int kLowPosition = 2;

}  // namespace

JobSettings& JobSettings::shared() {
  static JobSettings settings;
  return settings;
}

void JobSettings::init() {
  compressionMethod = kZip;
  archivePass = QStringLiteral("-p{}");
  splitVolumesSizeType = QStringLiteral("m");
  splitVolumesSize = QStringLiteral("-v");
  useLevel(levelNamed(PreferencesStore::text(QStringLiteral("DefaultCompressionLevel"))));
}

void JobSettings::useLevel(const CompressionLevel& level) {
  zipCompressionLevel = level.sevenZip;
  rarCompressionLevel = level.rar;
  arjCompressionLevel = level.arj;
  lhaCompressionLevel = level.lha;
}

const CompressionLevel* JobSettings::levelAt(int position) {
  if (position < 0 || position >= static_cast<int>(kLevels.size()))
    return nullptr;
  return &kLevels[static_cast<size_t>(position)];
}

const CompressionLevel& JobSettings::levelNamed(const QString& preference) {
  const QStringList names = {"Lowest", "Low", "Normal", "High", "Ultra"};
  const qsizetype index = names.indexOf(preference);
  return kLevels[static_cast<size_t>(index < 0 ? kLowPosition : index + 1)];
}

QString JobSettings::extensionFor(const QString& method) {
  if (method == kZip)
    return QStringLiteral(".zip");
  if (method == kSevenZip)
    return QStringLiteral(".7z");
  if (method == kTar || method == kGzip || method == kBzip2)
    return QStringLiteral(".tar");
  if (method == kRar)
    return QStringLiteral(".rar");
  if (method == kArj)
    return QStringLiteral(".arj");
  if (method == kLha)
    return QStringLiteral(".lha");
  return {};
}
