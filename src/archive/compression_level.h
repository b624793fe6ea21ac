#pragma once

#include "archive/raw_values.h"

namespace stowlark {

/// How hard the tools are told to compress. What each tool is told is its writer's business.
enum class CompressionLevel { fast, normal, best };

template <>
struct RawValues<CompressionLevel> {
    static const std::array<QString, 3> labels;
};

} // namespace stowlark
