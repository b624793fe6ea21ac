#include "app/stowlark_app.h"

#include "desktop/activation.h"
#include "foundation/file_url.h"
#include "info/info_module.h"
#include "window/main_window.h"
#include "window/uri_list.h"

#include <QAccessible>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QThreadPool>

/// Generated with the application's QML module.
void qml_register_types_Stowlark_App();

namespace stowlark {

StowlarkApp::StowlarkApp(const Desktop &desktop, UpdateChecker &updater)
    : view_(desktop, {}, AppState::shared(), updater)
    , appDelegate_(updater,
                   [this](const QUrl &file) {
                       activate();
                       AppState::shared().setIncomingFile(file);
                   })
    , commands_(AppState::shared(), updater, [this] { view_.openSite(); })
    , quitting_(*view_.mgr(), &QCoreApplication::quit) {
    // What Qt Quick 6.4 tells screen readers of a picker that it deletes crashes.
    QObject::connect(qGuiApp, &QGuiApplication::aboutToQuit, &view_,
                     [] { QAccessible::installUpdateHandler([](QAccessibleEvent *) {}); });

    // Reading the system's fonts takes about as long as loading the types, which another thread does.
    QThreadPool::globalInstance()->start([] { QFontDatabase::families(); });
    registerInfoModule();
    qml_register_types_Stowlark_App();
    window_ = openMainWindow(engine_, view_, QUrl(QStringLiteral("qrc:/qt/qml/Stowlark/App/Scene.qml")),
                             {{QStringLiteral("appState"), QVariant::fromValue(&AppState::shared())},
                              {QStringLiteral("commands"), QVariant::fromValue(&commands_)},
                              {QStringLiteral("quitting"), QVariant::fromValue(&quitting_)}});
}

void StowlarkApp::take(const Invocation &invocation) {
    quitting_.cancel(); // the window is wanted
    switch (invocation.kind) {
    case Invocation::Kind::activate:
        activate();
        break;
    case Invocation::Kind::open:
        open(invocation.uris);
        break;
    case Invocation::Kind::extractFiles:
        appDelegate_.serviceHandler().extractFiles(invocation.uris);
        break;
    case Invocation::Kind::action:
        for (const AppMode mode : allCases<AppMode>()) {
            if (invocation.action == rawValue(mode).toLower()) {
                view_.setMode(mode);
                activate();
            }
        }
        break;
    }
}

/// Of several files the last one would stay.
void StowlarkApp::open(const QStringList &uris) {
    for (qsizetype i = uris.size(); i > 0; --i) {
        if (const auto file = fileOf(uris[i - 1].toUtf8())) {
            appDelegate_.applicationOpenFile(path(*file));
            return;
        }
    }
}

void StowlarkApp::activate() const {
    window_->setWindowStates(window_->windowStates() & ~Qt::WindowMinimized);
    window_->show();
    window_->raise();
    window_->requestActivate();
    bringToFront();
}

} // namespace stowlark
