import QtQuick

/// The light in the window's top left corner, in the first accent colour. Faint enough to be drawn at a quarter
/// of its size.
Image {
    width: 480
    height: 480
    source: "image://symbol/Glow"
    sourceSize.width: 120
    sourceSize.height: 120
}
