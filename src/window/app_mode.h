#pragma once

#include "archive/raw_values.h"

namespace stowlark {

/// The window's two panes; their labels are those of the tabs.
enum class AppMode { compress, extract };

template <>
struct RawValues<AppMode> {
    static const std::array<QString, 2> labels;
};

} // namespace stowlark
