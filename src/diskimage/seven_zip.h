#pragma once

#include "diskimage/attached_items.h"

namespace stowlark {

/// Unpacks what the volume of a disk image holds into an empty folder with 7-Zip, which knows more kinds of
/// images, and puts right what that changes: composed names, links that it rewrote. Returns what is there.
/// Throws ImageError, also where the volume's contents need more space than there is; PlatformError.
AttachedItems unpackWithSevenZip(const Path &image, const Path &folder);

} // namespace stowlark
