#include "desktop/file_dialog.h"

#include "desktop/over_window.h"

#include <QCoro/QCoroSignal>

#include <QDir>
#include <QFileInfo>
#include <QPointer>

namespace stowlark {

QCoro::Task<QList<QUrl>> decision(QFileDialog *dialog, QUrl begin) {
    const QPointer<QFileDialog> alive(dialog);
    const QString folder = begin.toLocalFile();
    dialog->setDirectory(QFileInfo(folder).isDir() ? folder : QDir::homePath());
    showOverWindow(*dialog);
    const int result = co_await qCoro(dialog, &QDialog::finished);
    QList<QUrl> chosen;
    if (alive && result == QDialog::Accepted) {
        chosen = dialog->selectedUrls();
    }
    if (alive) {
        dialog->deleteLater();
    }
    co_return chosen;
}

} // namespace stowlark
