#include "desktop/file_dialog.h"

#include "desktop/over_window.h"

#include <QCoro/QCoroSignal>

#include <QDir>
#include <QPointer>

namespace stowlark {

QCoro::Task<QList<QUrl>> decision(QFileDialog *dialog) {
    const QPointer<QFileDialog> alive(dialog);
    dialog->setDirectory(QDir::homePath());
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
