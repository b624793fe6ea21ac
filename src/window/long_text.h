#pragma once

#include <QStringList>

namespace stowlark {

/// The lines of a text that is too long to be laid out at once, themselves in pieces of bounded length; none
/// if it is short.
QStringList linesOfLongText(const QString &text);

} // namespace stowlark
