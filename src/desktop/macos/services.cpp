#include "desktop/services.h"

#include "desktop/macos/appkit_services.h"

namespace stowlark {

void provideServices(std::function<void(const QStringList &urls)> extractFiles) {
    static std::function<void(const QStringList &urls)> taker;
    taker = std::move(extractFiles);
    appkit::provideServices(
        [](void * /*context*/, const char *lines) { taker(QString::fromUtf8(lines).split(u'\n')); }, nullptr);
}

} // namespace stowlark
