#pragma once

#include <QQuickImageProvider>

namespace stowlark {

/// Gives QML the symbols: "image://symbol/NAME/SIDE/AARRGGBB", the side in pixels of the device; and the
/// window's other drawings, such as the application's icon, in their own colours: "image://symbol/NAME" with
/// a source size.
class SymbolProvider : public QQuickImageProvider {
public:
    SymbolProvider();
    QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override;
};

} // namespace stowlark
