#include "desktop/open_panel.h"

#include "desktop/file_dialog.h"

#include <utility>

namespace stowlark {
namespace {

QCoro::Task<std::optional<QUrl>> oneDecision(QFileDialog *dialog, QUrl begin) {
    const QList<QUrl> chosen = co_await decision(dialog, std::move(begin));
    co_return chosen.isEmpty() ? std::nullopt : std::optional(chosen.first());
}

} // namespace

QCoro::Task<std::optional<QUrl>> chooseArchive(QUrl begin) {
    auto *dialog = new QFileDialog;
    dialog->setWindowTitle(QFileDialog::tr("Choose an Archive"));
    dialog->setFileMode(QFileDialog::ExistingFile);
    dialog->setNameFilters({QFileDialog::tr("Archives (*.zip *.tar.gz *.tgz *.gz *.tar *.7z *.rar *.dmg)"),
                            QFileDialog::tr("All files (*)")});
    return oneDecision(dialog, std::move(begin));
}

QCoro::Task<std::optional<QUrl>> chooseFolder(QUrl begin) {
    auto *dialog = new QFileDialog;
    dialog->setWindowTitle(QFileDialog::tr("Choose a Folder"));
    dialog->setFileMode(QFileDialog::Directory);
    dialog->setOption(QFileDialog::ShowDirsOnly);
    return oneDecision(dialog, std::move(begin));
}

} // namespace stowlark
