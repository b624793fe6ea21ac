#pragma once

#include <cstdint>

/// What the UDIF format fixes.
namespace stowlark::udif {

constexpr std::uint64_t sectorSize = 512;  ///< bytes
constexpr std::uint64_t trailerSize = 512; ///< bytes

enum RunType : std::uint32_t {
    zeroFill = 0,
    raw = 1,
    ignored = 2,
    comment = 0x7FFFFFFE,
    zlib = 0x80000005,
    bzip2 = 0x80000006,
    terminator = 0xFFFFFFFF
};

} // namespace stowlark::udif
