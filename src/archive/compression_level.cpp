#include "archive/compression_level.h"

namespace stowlark {

const std::array<QString, 3> RawValues<CompressionLevel>::labels{
    QStringLiteral("Fast"),
    QStringLiteral("Normal"),
    QStringLiteral("Best (Slow)"),
};

} // namespace stowlark
