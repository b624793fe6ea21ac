#pragma once

namespace stowlark::appkit {

/// Takes encoded URLs, each on a line of its own. They are valid during the call.
using TakeUrls = void (*)(void *context, const char *lines);

} // namespace stowlark::appkit
