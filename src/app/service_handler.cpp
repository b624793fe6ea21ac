#include "app/service_handler.h"

#include "window/uri_list.h"

namespace stowlark {

ServiceHandler::ServiceHandler(HandOver handOver)
    : handOver_(std::move(handOver)) {}

void ServiceHandler::extractFiles(const QStringList &urls) {
    for (const QString &url : urls) {
        if (const auto file = fileOf(url.toUtf8())) {
            QMetaObject::invokeMethod(
                this, [this, file] { handOver_(*file); }, Qt::QueuedConnection);
            return;
        }
    }
}

} // namespace stowlark
