#pragma once

#include "rarfree/CommandLine.h"

// "unrar t [-pPASS] A": The Unarchiver tests every entry; "All OK" ends the
// report only when every entry tested sound.
int testArchive(const CommandLine& line);
