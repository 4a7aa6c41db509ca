#pragma once

#include "rarfree/CommandLine.h"
#include "rarfree/RarStyleListing.h"

// "r l -pPASS A" and "unrar l A": the listing as 7-Zip reads it. When 7-Zip
// cannot read everything, what it read is listed and the reason follows.
int listArchive(const CommandLine& line, const RarStyleListing& layout);
