#include "desktop/linux/application_bus.h"

#include "foundation/application_id.h"

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusReply>

namespace stowlark {
namespace {

constexpr int answerTime = 300; // in ms
constexpr const char *tokenVariable = "XDG_ACTIVATION_TOKEN";
const QString tokenKey = QStringLiteral("activation-token");
const QString standardInterface = QStringLiteral("org.freedesktop.Application");

/// By which the desktop knows that the user asked for the window, and lets it come to the front.
QVariantMap platformData() {
    const QByteArray token = qgetenv(tokenVariable);
    return token.isEmpty() ? QVariantMap() : QVariantMap{{tokenKey, QString::fromLatin1(token)}};
}

/// Where Qt looks for it when it activates a window.
void takePlatformData(const QVariantMap &data) {
    if (const QByteArray token = data.value(tokenKey).toString().toLatin1(); !token.isEmpty()) {
        qputenv(tokenVariable, token);
    }
}

bool ask(const QString &interface, const QString &method, const QVariantList &arguments) {
    auto call = QDBusMessage::createMethodCall(applicationId(), applicationObjectPath(), interface, method);
    call.setArguments(arguments);
    call.setAutoStartService(false);
    const QDBusError error = QDBusConnection::sessionBus().call(call, QDBus::Block, answerTime);
    return !error.isValid() || error.type() == QDBusError::NoReply;
}

} // namespace

/// org.freedesktop.Application, as desktops call it.
class StandardAdaptor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    explicit StandardAdaptor(ApplicationBus &bus)
        : QDBusAbstractAdaptor(&bus)
        , bus_(bus) {}

public Q_SLOTS:
    void Activate(const QVariantMap &platformData) { // NOLINT(readability-identifier-naming)
        takePlatformData(platformData);
        Q_EMIT bus_.activateAsked();
    }

    void Open(const QStringList &uris,
              const QVariantMap &platformData) { // NOLINT(readability-identifier-naming)
        takePlatformData(platformData);
        Q_EMIT bus_.openAsked(uris);
    }

    void ActivateAction(const QString &name,
                        const QVariantList & /*parameter*/, // NOLINT(readability-identifier-naming)
                        const QVariantMap &platformData) {
        takePlatformData(platformData);
        Q_EMIT bus_.actionAsked(name);
    }

private:
    ApplicationBus &bus_;
};

/// The application's own interface.
class ServiceAdaptor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", STOWLARK_ID)

public:
    explicit ServiceAdaptor(ApplicationBus &bus)
        : QDBusAbstractAdaptor(&bus)
        , bus_(bus) {}

public Q_SLOTS:
    void extractFiles(const QStringList &uris) { Q_EMIT bus_.extractFilesAsked(uris); }

private:
    ApplicationBus &bus_;
};

ApplicationBus::ApplicationBus() {
    new StandardAdaptor(*this); // both are owned by what they adapt
    new ServiceAdaptor(*this);
}

bool ApplicationBus::takeName() {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        return true;
    }
    bus.registerObject(applicationObjectPath(), this); // first, so that no call arrives before it is there
    return bus.registerService(applicationId());
}

bool ApplicationBus::askToActivate() const {
    return ask(standardInterface, QStringLiteral("Activate"), {platformData()});
}

bool ApplicationBus::askToOpen(const QStringList &uris) const {
    return ask(standardInterface, QStringLiteral("Open"), {uris, platformData()});
}

bool ApplicationBus::askToExtractFiles(const QStringList &uris) const {
    return ask(applicationId(), QStringLiteral("extractFiles"), {uris});
}

bool ApplicationBus::askForAction(const QString &action) const {
    return ask(standardInterface, QStringLiteral("ActivateAction"), {action, QVariantList(), platformData()});
}

} // namespace stowlark

#include "application_bus.moc"
