#pragma once

#include <QCoro/QCoroTask>

#include <QFileDialog>
#include <QList>
#include <QUrl>

namespace stowlark {

/// Shows the dialog, which it then deletes, over the window until the user has decided; it begins in the
/// folder, or in the home folder if that does not exist. Nothing if the user cancels.
QCoro::Task<QList<QUrl>> decision(QFileDialog *dialog, QUrl begin);

} // namespace stowlark
