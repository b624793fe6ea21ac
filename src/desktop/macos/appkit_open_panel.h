#pragma once

#include "desktop/macos/take_urls.h"

namespace stowlark::appkit {

/// Shows a modal panel to choose any number of files and folders. `take` is called before the return, with
/// what was chosen; not if the user cancels.
void runOpenPanel(TakeUrls take, void *context);

} // namespace stowlark::appkit
