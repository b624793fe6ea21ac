#include "desktop/alert.h"

#include "desktop/macos/appkit_alert.h"

namespace stowlark {

QCoro::Task<> showAlert(QString title, QString message, AlertStyle style) {
    appkit::runAlert(title.toUtf8().constData(), message.toUtf8().constData(), static_cast<int>(style));
    co_return;
}

} // namespace stowlark
