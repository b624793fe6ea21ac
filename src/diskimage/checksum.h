#pragma once

#include "diskimage/bytes.h"

#include <zlib.h>

namespace stowlark {

inline std::uint32_t crc32Of(ByteSpan bytes) {
    return static_cast<std::uint32_t>(::crc32_z(0, bytes.data(), bytes.size()));
}

} // namespace stowlark
