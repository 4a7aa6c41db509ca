#pragma once

#include <QString>

// How an item reached the selection list; each way words folder sizes a
// little differently.
enum class SelectionEntry { Dropped, OpenPanel, AddFiles };

// The size texts of the selection list. Sizes are single-precision byte
// counts, as measured for the list.
namespace SelectionSizeText {

// KB below 1 MiB, MB below 1 GiB, else GB; AddFiles shows whole kilobytes.
QString folder(float bytes, SelectionEntry entry);

// KB below 1 MiB, else MB, however large.
QString file(float bytes);

}  // namespace SelectionSizeText
