#include "desktop/open_panel.h"

#include "desktop/file_dialog.h"

namespace stowlark {
namespace {

QCoro::Task<std::optional<QUrl>> oneDecision(QFileDialog *dialog) {
    const QList<QUrl> chosen = co_await decision(dialog);
    co_return chosen.isEmpty() ? std::nullopt : std::optional(chosen.first());
}

} // namespace

QCoro::Task<std::optional<QUrl>> chooseArchive() {
    auto *dialog = new QFileDialog;
    dialog->setWindowTitle(QFileDialog::tr("Choose an Archive"));
    dialog->setFileMode(QFileDialog::ExistingFile);
    dialog->setNameFilters({QFileDialog::tr("Archives (*.zip *.tar.gz *.tgz *.gz *.tar *.7z *.rar *.dmg)"),
                            QFileDialog::tr("All files (*)")});
    return oneDecision(dialog);
}

QCoro::Task<std::optional<QUrl>> chooseFolder() {
    auto *dialog = new QFileDialog;
    dialog->setWindowTitle(QFileDialog::tr("Choose a Folder"));
    dialog->setFileMode(QFileDialog::Directory);
    dialog->setOption(QFileDialog::ShowDirsOnly);
    return oneDecision(dialog);
}

} // namespace stowlark
