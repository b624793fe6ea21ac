#pragma once

#include "update/update_checker.h"

namespace stowlark {

/// The program's one update checker, which shows its alerts and opens its pages on the system's desktop.
UpdateChecker &sharedUpdateChecker();

} // namespace stowlark
