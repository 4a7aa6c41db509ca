#pragma once

#include "engine/ArchiveEntry.h"

#include <QByteArray>

class EntryIcons;

// The rows of GNU tar's verbose listing (escape quoting style). tar shows
// no packed size or checksum; a folder shows no size either.
ArchiveEntries parseTarListing(const QByteArray& listing, EntryIcons& icons);
