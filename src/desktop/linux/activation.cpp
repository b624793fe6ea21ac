#include "desktop/activation.h"

#include "desktop/linux/platform_data.h"

namespace stowlark {

void bringToFront() {
    forgetActivationToken(); // which the window has used up; tools are not to inherit it
}

} // namespace stowlark
