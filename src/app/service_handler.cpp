#include "app/service_handler.h"

#include "window/uri_list.h"

namespace stowlark {

ServiceHandler::ServiceHandler(const HandOver &handOver) {
    connect(this, &ServiceHandler::fileAsked, this, handOver, Qt::QueuedConnection);
}

void ServiceHandler::extractFiles(const QStringList &urls) {
    for (const QString &url : urls) {
        if (const auto file = fileOf(url.toUtf8())) {
            Q_EMIT fileAsked(*file);
            return;
        }
    }
}

} // namespace stowlark
