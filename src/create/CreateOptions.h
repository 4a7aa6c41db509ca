#pragma once

#include <QString>

// The states of the options of a new archive and the rules by which each
// control enables, disables or resets the others. Plain values, so that
// the rules can be checked without a window; the window shows them.
struct CreateOptions {
  enum class Format { Zip, SevenZip, Tar, Gzip, Bzip2, Rar, Arj, Lha };
  enum Unit { Kilobytes = 0, Megabytes = 1, Gigabytes = 2 };

  bool sfxEnabled = true;
  bool sfxChecked = false;
  bool splitEnabled = true;
  bool splitChecked = false;
  bool splitSizeEnabled = false;
  QString splitSizeText;
  bool unitEnabled = false;
  int unitIndex = Megabytes;
  bool passwordEnabled = true;
  bool passwordChecked = false;
  bool passwordFieldsEnabled = false;
  QString passwordText;
  QString confirmText;
  bool notesPanelOpen = false;
  bool sfxDrawerOpen = false;
  bool uploadEnabled = true;
  bool uploadChecked = false;
  bool everyItemChecked = false;
  bool everyItemLabelVisible = false;

  // A format button; returns the method that JobSettings takes.
  QString chooseFormat(Format format);
  // The user turned a checkbox on or off (its new state is given).
  void passwordToggled(bool on);
  void splitToggled(bool on, const QString& method);
  void sfxToggled(bool on);
  void everyItemToggled(bool on);
};
