#include "archive/archive_format.h"

namespace stowlark {

const std::array<QString, 5> RawValues<ArchiveFormat>::labels{
    QStringLiteral("ZIP"), QStringLiteral("TAR.GZ"),      QStringLiteral("7-Zip (.7z)"),
    QStringLiteral("RAR"), QStringLiteral("DMG (macOS)"),
};

} // namespace stowlark
