#include "desktop/linux/application_bus.h"

#include "desktop/linux/application_adaptors.h"
#include "desktop/linux/platform_data.h"
#include "foundation/application_id.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>

namespace stowlark {
namespace {

constexpr int answerTime = 200; // in ms
const QString standardInterface = QStringLiteral("org.freedesktop.Application");

QDBusMessage message(const QString &interface, const QString &method, const QVariantList &arguments) {
    auto call = QDBusMessage::createMethodCall(applicationId(), applicationObjectPath(), interface, method);
    call.setArguments(arguments);
    call.setAutoStartService(false);
    return call;
}

bool ask(const QString &interface, const QString &method, const QVariantList &arguments) {
    const QDBusConnection bus = QDBusConnection::sessionBus();
    const QDBusError error = bus.call(message(interface, method, arguments), QDBus::Block, answerTime);
    return !error.isValid() || (error.type() == QDBusError::NoReply &&
                                bus.interface()->isServiceRegistered(applicationId())); // it is only slow
}

} // namespace

ApplicationBus::ApplicationBus() {
    new StandardAdaptor(*this);
    new ServiceAdaptor(*this);
}

bool ApplicationBus::takeName() {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        return true;
    }
    bus.registerObject(applicationObjectPath(), this); // first, so that no call arrives before it is there
    if (!bus.registerService(applicationId())) {
        return false;
    }
    // Given back as soon as no call is answered any more.
    connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this,
            [bus]() mutable { bus.unregisterService(applicationId()); });
    return true;
}

bool ApplicationBus::askToActivate() {
    return ask(standardInterface, QStringLiteral("Activate"), {platformData()});
}

bool ApplicationBus::askToOpen(const QStringList &uris) {
    return ask(standardInterface, QStringLiteral("Open"), {uris, platformData()});
}

bool ApplicationBus::askToExtractFiles(const QStringList &uris) {
    if (const QVariantMap token = platformData(); !token.isEmpty()) { // for which extractFiles has no place
        QDBusConnection::sessionBus().send(message(standardInterface, QStringLiteral("Activate"), {token}));
    }
    return ask(applicationId(), QStringLiteral("extractFiles"), {uris});
}

bool ApplicationBus::askForAction(const QString &action) {
    return ask(standardInterface, QStringLiteral("ActivateAction"), {action, QVariantList(), platformData()});
}

} // namespace stowlark
