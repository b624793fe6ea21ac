#pragma once

#include "archive/raw_values.h"

namespace stowlark {

/// The formats in which archives can be created.
enum class ArchiveFormat { zip, tarGz, sevenZ, rar, dmg };

template <>
struct RawValues<ArchiveFormat> {
    static const std::array<QString, 5> labels;
};

} // namespace stowlark
