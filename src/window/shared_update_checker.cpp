#include "window/shared_update_checker.h"

#include "desktop/desktop.h"

namespace stowlark {

UpdateChecker &sharedUpdateChecker() {
    static const Desktop desktop = systemDesktop();
    static UpdateChecker checker({.showAlert = desktop.showAlert, .openURL = desktop.openURL});
    return checker;
}

} // namespace stowlark
