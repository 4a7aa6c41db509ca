#pragma once

#include <QString>
#include <QStringList>

class ToolRunner;

// The archive test's report as the text view shows it, without the tool's
// banner, and its verdict.
namespace TestReport {

// The banners of the versions the test was first written for; the banner
// of the installed tool is learned from it when it runs.
inline const QString kSevenZip904Banner = QStringLiteral(
    "\n7-Zip 9.04 beta  Copyright (c) 1999-2009 Igor Pavlov  2009-05-30\n"
    "p7zip Version 9.04 (locale=utf8,Utf16=on,HugeFiles=on,2 CPUs)\n\n");
inline const QString kUnrar390Banner =
    QStringLiteral("UNRAR 3.90 beta 2 freeware      Copyright (c) 1993-2009 Alexander Roshal\n");

// What 7-Zip prints above everything: the lines before its usage when run
// bare (they hold the machine's CPU and locale, so they are read, not
// written down).
QString sevenZipBannerFrom(const QString& bareOutput);
// unrar's banner is its first line.
QString unrarBannerFrom(const QString& bareOutput);

// The banner of the tool at this path, learned once per process.
QString installedBanner(ToolRunner& runner, const QString& program, bool isUnrar);

QString withoutBanners(QString report, const QStringList& banners);
bool passed(const QString& report, bool isRar);

}  // namespace TestReport
