#pragma once

#include <QString>

// The first volume of the set that the archive belongs to, when it is a
// later volume and the first one is at hand; otherwise the archive itself.
// 7-Zip reads a whole set only from its first volume.
QString firstVolumeOf(const QString& archive);
