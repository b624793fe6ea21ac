#pragma once

#include "desktop/desktop.h"

#include <QStringList>

#include <utility>

namespace stowlark {

/// A desktop for tests, on which nothing waits for a person.
struct OwnDesktop {
    QUrl choice{};        ///< what the next chooser ends with, once
    QStringList alerts{}; ///< the titles of those that were shown

    Desktop desktop() {
        Desktop own = systemDesktop();
        own.chooseFilesAndFolders = [this](QUrl) -> QCoro::Task<QList<QUrl>> {
            co_return QList{std::exchange(choice, {})};
        };
        own.chooseArchive = own.chooseFolder = [this](QUrl) -> QCoro::Task<std::optional<QUrl>> {
            co_return std::optional(std::exchange(choice, {}));
        };
        own.showAlert = [this](QString title, QString, AlertStyle) -> QCoro::Task<> {
            alerts += title;
            co_return;
        };
        return own;
    }
};

} // namespace stowlark
