#pragma once

#include "diskimage/checked_disk.h"

#include <map>

namespace imagecheck {

struct VolumeItem {
    char kind = 0; ///< 'f'ile, 'd'irectory or 'l'ink
    std::uint32_t mode = 0;
    std::uint32_t uid = 0;
    std::uint32_t gid = 0;
    std::int64_t modified = 0; ///< in seconds since 1970
    std::uint64_t size = 0;
    std::string contents; ///< the target of a link, the CRC32 of a file in decimal
};

/// Names are as stored, in normalization form D, but with ':' where '/' is stored.
struct Volume {
    std::string name;
    std::map<std::string, VolumeItem> items; ///< by path, relative to the root
};

/// Checks the HFSX volume in `disk` as a file system checker does. Throws std::runtime_error.
Volume readVolume(const Path &disk, VolumePlace place);

} // namespace imagecheck
