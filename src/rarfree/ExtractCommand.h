#pragma once

#include "rarfree/CommandLine.h"

// "unrar x -o+|-o- -y [-pPASS|-p{}] A [D]": The Unarchiver extracts into a
// staging folder inside D, then every entry it wrote whole moves into D.
// Nothing unar reported as failed, nor any link leading out of D, reaches
// D.
int extractArchive(const CommandLine& line);
