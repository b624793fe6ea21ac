#pragma once

#include "diskimage/attached_items.h"

namespace stowlark {

/// Unpacks the one HFS+ volume of a UDIF image into an empty folder and returns what it made: names, links,
/// permissions and dates as they are stored, hard links as copies, what is zero as holes. Throws
/// UnsupportedImage, before it writes anything, for other images; ImageError; PlatformError.
AttachedItems unpackVolume(const Path &image, const Path &folder);

} // namespace stowlark
