#pragma once

#include <QStringList>

#include <functional>

namespace stowlark {

/// Offers the desktop's file manager the service "extractFiles" for as long as the program runs. The function
/// is called on the main thread with the chosen files' URLs, encoded and in their order. Needs a
/// QApplication. One source per system.
void provideServices(std::function<void(const QStringList &urls)> extractFiles);

} // namespace stowlark
