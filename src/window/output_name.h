#pragma once

#include <QString>

namespace stowlark {

/// Nothing but spaces and tabs (line breaks are none).
bool isBlank(QStringView text);

/// The name of the archive's file, always one component of a path: what was typed ("archive" if that is
/// blank), with `extension`.
QString outputName(const QString &typed, const QString &extension);

} // namespace stowlark
