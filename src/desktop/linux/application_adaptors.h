#pragma once

#include "desktop/linux/application_bus.h"
#include "desktop/linux/platform_data.h"

#include <QDBusAbstractAdaptor>

/// The interfaces of the application on the session bus. What they adapt owns them.
namespace stowlark {

/// As desktops call it. Names of methods are those on the bus.
class StandardAdaptor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    explicit StandardAdaptor(ApplicationBus &bus)
        : QDBusAbstractAdaptor(&bus)
        , bus_(bus) {}

    // NOLINTBEGIN(readability-identifier-naming)
public Q_SLOTS: // NOLINT(readability-redundant-access-specifiers)
    void Activate(const QVariantMap &platformData) {
        takePlatformData(platformData);
        Q_EMIT bus_.activateAsked();
    }

    void Open(const QStringList &uris, const QVariantMap &platformData) {
        takePlatformData(platformData);
        Q_EMIT bus_.openAsked(uris);
    }

    void ActivateAction(const QString &name, const QVariantList & /*parameter*/,
                        const QVariantMap &platformData) {
        takePlatformData(platformData);
        Q_EMIT bus_.actionAsked(name);
    }
    // NOLINTEND(readability-identifier-naming)

private:
    ApplicationBus &bus_;
};

/// The application's own.
class ServiceAdaptor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", STOWLARK_ID)

public:
    explicit ServiceAdaptor(ApplicationBus &bus)
        : QDBusAbstractAdaptor(&bus)
        , bus_(bus) {}

public Q_SLOTS: // NOLINT(readability-redundant-access-specifiers)
    void extractFiles(const QStringList &uris) { Q_EMIT bus_.extractFilesAsked(uris); }

private:
    ApplicationBus &bus_;
};

} // namespace stowlark
