#include "engine/listing/ToolBanner.h"

#include <QRegularExpression>

namespace {

// Banners stand in the first few lines; later lines are the listing.
constexpr qsizetype kBannerLines = 6;

ToolBanner findBanner(const OutputLines& lines, const QRegularExpression& pattern) {
  for (qsizetype i = 0; i < lines.count() && i < kBannerLines; ++i) {
    const QRegularExpressionMatch match = pattern.match(lines.text(i));
    if (match.hasMatch())
      return {match.captured(1).toInt(), match.captured(2).toInt(), true};
  }
  return {};
}

}  // namespace

ToolBanner ToolBanner::sevenZip(const OutputLines& lines) {
  static const QRegularExpression pattern(
      QStringLiteral(R"(^7-Zip (?:\([aAr]\) )?(?:\[\d+\] )?(\d+)\.(\d+))"));
  return findBanner(lines, pattern);
}

ToolBanner ToolBanner::rar(const OutputLines& lines) {
  static const QRegularExpression pattern(QStringLiteral(R"(^(?:UN)?RAR (\d+)\.(\d+))"));
  return findBanner(lines, pattern);
}

ToolBanner ToolBanner::arj(const OutputLines& lines) {
  static const QRegularExpression pattern(QStringLiteral(R"(^ARJ\S* v ?(\d+)\.(\d+))"));
  return findBanner(lines, pattern);
}
