#pragma once

#include <QDBusMessage>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

namespace stowlark {

/// The application on the session bus, under its id: org.freedesktop.Application, and an interface named by
/// the id with the method extractFiles, which takes file URLs. One instance has the name; what a later one
/// asks reaches it as the signals.
class ApplicationBus : public QObject {
    Q_OBJECT

public:
    ApplicationBus();

    /// Whether this is the instance to go on: it has the name from now on, or there is no bus.
    bool takeName();

    /// Each asks the instance that has the name; false if it is gone. They return when it has answered, or
    /// after a moment: what was sent still arrives.
    static bool askToActivate();
    static bool askToOpen(const QStringList &uris);
    static bool askToExtractFiles(const QStringList &uris);
    static bool askForAction(const QString &action);

Q_SIGNALS:
    void activateAsked();
    void openAsked(const QStringList &uris);
    void extractFilesAsked(const QStringList &uris);
    void actionAsked(const QString &action);
};

} // namespace stowlark
