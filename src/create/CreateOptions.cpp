#include "create/CreateOptions.h"

#include "create/JobSettings.h"

namespace {

QString methodOf(CreateOptions::Format format) {
  using Format = CreateOptions::Format;
  switch (format) {
    case Format::Zip:
      return JobSettings::kZip;
    case Format::SevenZip:
      return JobSettings::kSevenZip;
    case Format::Tar:
      return JobSettings::kTar;
    case Format::Gzip:
      return JobSettings::kGzip;
    case Format::Bzip2:
      return JobSettings::kBzip2;
    case Format::Rar:
      return JobSettings::kRar;
    case Format::Arj:
      return JobSettings::kArj;
    case Format::Lha:
      return JobSettings::kLha;
  }
  return {};
}

}  // namespace

QString CreateOptions::chooseFormat(Format format) {
  const auto noSplitting = [this] {
    splitChecked = false;
    splitEnabled = false;
    splitSizeEnabled = false;
    unitEnabled = false;
  };
  const auto noPassword = [this] {
    passwordChecked = false;
    passwordEnabled = false;
    passwordFieldsEnabled = false;
    confirmText.clear();
  };
  const auto noSelfExtraction = [this] {
    sfxEnabled = false;
    sfxChecked = false;
    sfxDrawerOpen = false;
  };

  switch (format) {
    case Format::Zip:
    case Format::SevenZip:
      if (!everyItemChecked)
        splitEnabled = sfxEnabled = true;
      if (splitChecked)
        unitEnabled = true;
      passwordChecked = false;
      passwordEnabled = true;
      break;
    case Format::Tar:
      // Tar keeps the self-extraction checkbox and its drawer as they are,
      // unlike the other single-stream formats.
      sfxEnabled = !everyItemChecked;
      noSplitting();
      noPassword();
      break;
    case Format::Gzip:
    case Format::Bzip2:
    case Format::Arj:
    case Format::Lha:
      noSelfExtraction();
      noSplitting();
      noPassword();
      break;
    case Format::Rar:
      noSelfExtraction();
      unitEnabled = false;
      unitIndex = Kilobytes;
      splitSizeText = QStringLiteral("2048");
      splitEnabled = !everyItemChecked;
      passwordChecked = false;
      passwordEnabled = true;
      break;
  }
  notesPanelOpen = format == Format::Rar;
  return methodOf(format);
}

void CreateOptions::passwordToggled(bool on) {
  passwordChecked = on;
  passwordFieldsEnabled = on;
  if (!on) {
    passwordText.clear();
    confirmText.clear();
  }
}

void CreateOptions::splitToggled(bool on, const QString& method) {
  splitChecked = on;
  splitSizeEnabled = on;
  unitEnabled = on && method != JobSettings::kRar;
  // A split archive is never uploaded.
  uploadEnabled = !on;
  if (on)
    uploadChecked = false;
}

void CreateOptions::sfxToggled(bool on) {
  sfxChecked = on;
  sfxDrawerOpen = on;
  notesPanelOpen = !notesPanelOpen;
  if (on) {
    splitChecked = false;
    splitEnabled = false;
    splitSizeEnabled = false;
    unitEnabled = false;
    uploadEnabled = false;
    uploadChecked = false;
  } else {
    splitEnabled = true;
    uploadEnabled = true;
  }
}

void CreateOptions::everyItemToggled(bool on) {
  everyItemChecked = on;
  everyItemLabelVisible = on;
  uploadEnabled = !on;
  if (on)
    uploadChecked = false;
}
