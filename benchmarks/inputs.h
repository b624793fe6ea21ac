#pragma once

#include "foundation/path_name.h"

/// What the measurements work on. The same bytes in every run.
namespace stowlark {

/// Makes the new folder `tree` with 10,000 files in 100 folders, of 0.5 to 8 KB that compress like text.
void makeSmallFiles(const Path &tree);
/// Twice as many.
void makeMoreSmallFiles(const Path &tree);

/// Makes the new folder `tree` with 8 files of 30 MB, of which about 60% compress like text and the rest not.
void makeLargeFiles(const Path &tree);
/// Makes 10 of them.
void makeMoreLargeFiles(const Path &tree);

/// Makes the new folder `tree` with 100,000 files of a few bytes in 100 folders.
void makeTinyFiles(const Path &tree);

} // namespace stowlark
