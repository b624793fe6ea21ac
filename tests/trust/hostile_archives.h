#pragma once

#include "trust/archive_writers.h"

namespace stowlark {

/// What archives of one kind hold, each harmful in its own way.
struct Kind {
    const char *name;
    std::vector<Items> archives;
};

/// To be unpacked two folders below the one that holds the folder `watched`, which holds the folder
/// "sentinel" with the file "victim". `many`: entries in the archive that has too many.
std::vector<Kind> hostileKinds(const Path &watched, int many);

/// Files, folders and links, one of them outward, as one meets them.
Items ordinaryItems();

} // namespace stowlark
