#include "app/menu_commands.h"

#include "foundation/site.h"

#include <QCoreApplication>
#include <QKeySequence>

namespace stowlark {

MenuCommand::MenuCommand(QString label, QStringList keys, std::function<void()> action)
    : label_(std::move(label))
    , keys_(std::move(keys))
    , action_(std::move(action)) {}

QString MenuCommand::shownKeys() const {
    return QKeySequence(keys_.value(0)).toString(QKeySequence::NativeText);
}

MenuCommands::MenuCommands(AppState &appState, UpdateChecker &updater, std::function<void()> visitSite)
    : about_(tr("About Stowlark"), {}, [&appState] { appState.setShowAbout(true); })
    , checkForUpdates_(tr("Check for Updates…"), {}, [&updater] { updater.checkManually(); })
    , quit_(tr("Quit Stowlark"), {QStringLiteral("Ctrl+Q")}, &QCoreApplication::quit)
    , help_(tr("Stowlark Help"), {QStringLiteral("Ctrl+?"), QStringLiteral("F1")},
            [&appState] { appState.setShowHelp(true); })
    , visit_(tr("Visit %1").arg(siteName()), {}, std::move(visitSite)) {}

} // namespace stowlark
