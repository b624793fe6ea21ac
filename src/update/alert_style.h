#pragma once

namespace stowlark {

enum class AlertStyle { warning = 0, informational = 1 };

} // namespace stowlark
