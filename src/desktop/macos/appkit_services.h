#pragma once

#include "desktop/macos/take_urls.h"

namespace stowlark::appkit {

/// Answers the service "extractFiles" from now on: `take` gets the URLs of the files on its pasteboard, if
/// there are any.
void provideServices(TakeUrls take, void *context);

} // namespace stowlark::appkit
