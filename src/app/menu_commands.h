#pragma once

#include "update/update_checker.h"
#include "window/app_state.h"

#include <QObject>
#include <QStringList>
#include <QtQml/qqml.h>

#include <functional>

namespace stowlark {

/// One command of the menus.
class MenuCommand : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the application")
    Q_PROPERTY(QString label READ label CONSTANT)
    Q_PROPERTY(QVariantList sequences READ sequences CONSTANT)
    Q_PROPERTY(QString shownKeys READ shownKeys CONSTANT)

public:
    MenuCommand(QString label, QStringList keys, std::function<void()> action);

    const QString &label() const { return label_; }
    /// The keys that trigger it, as QKeySequence names them.
    const QStringList &keys() const { return keys_; }
    /// The same for QML.
    QVariantList sequences() const { return {keys_.begin(), keys_.end()}; }
    /// What the menu shows of them: the first, as this system writes it.
    QString shownKeys() const;
    Q_INVOKABLE void trigger() const { action_(); }

private:
    QString label_;
    QStringList keys_;
    std::function<void()> action_;
};

/// The commands of the menus: those of the application's own menu, and of the Help menu.
class MenuCommands : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the application")
    Q_PROPERTY(stowlark::MenuCommand *about READ about CONSTANT)
    Q_PROPERTY(stowlark::MenuCommand *checkForUpdates READ checkForUpdates CONSTANT)
    Q_PROPERTY(stowlark::MenuCommand *quit READ quit CONSTANT)
    Q_PROPERTY(stowlark::MenuCommand *help READ help CONSTANT)
    Q_PROPERTY(stowlark::MenuCommand *visit READ visit CONSTANT)

public:
    /// `visitSite` opens the maker's site.
    MenuCommands(AppState &appState, UpdateChecker &updater, std::function<void()> visitSite);

    MenuCommand *about() { return &about_; }
    MenuCommand *checkForUpdates() { return &checkForUpdates_; }
    MenuCommand *quit() { return &quit_; }
    MenuCommand *help() { return &help_; }
    MenuCommand *visit() { return &visit_; }

private:
    MenuCommand about_;
    MenuCommand checkForUpdates_;
    MenuCommand quit_;
    MenuCommand help_;
    MenuCommand visit_;
};

} // namespace stowlark
