#pragma once

#include "diskimage/attached_items.h"

namespace stowlark {

/// Puts right what 7-Zip changes in what it unpacked into `folder`, a canonical path: names become composed
/// again, and absolute targets of links lose the `folder` that they were put under. Throws PlatformError.
void putRight(const Path &folder);

/// All that `folder` holds, following no link.
AttachedItems everythingIn(const Path &folder);

} // namespace stowlark
