#pragma once

#include <QDialog>

namespace stowlark {

/// Shows the dialog over the window that has the focus, which takes no input until the dialog is gone.
void showOverWindow(QDialog &dialog);

} // namespace stowlark
