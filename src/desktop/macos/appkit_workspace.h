#pragma once

namespace stowlark::appkit {

/// Shows the item with this encoded file URL, selected, in the Finder.
void reveal(const char *url);

} // namespace stowlark::appkit
