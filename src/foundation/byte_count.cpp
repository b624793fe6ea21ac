#include "foundation/byte_count.h"

#include <array>

namespace stowlark {
namespace {

struct Unit {
    const char *name;
    double bytes;
    int decimals;
};

constexpr std::array<Unit, 5> units{
    {{"KB", 1e3, 0}, {"MB", 1e6, 1}, {"GB", 1e9, 2}, {"TB", 1e12, 2}, {"PB", 1e15, 2}}};

} // namespace

QString byteCountText(qint64 bytes) {
    if (bytes == 0) {
        return QStringLiteral("Zero KB");
    }
    if (bytes == 1) {
        return QStringLiteral("1 byte");
    }
    if (bytes < 1000) {
        return QStringLiteral("%1 bytes").arg(bytes);
    }
    const auto rounded = [bytes](const Unit &unit) {
        return QString::number(static_cast<double>(bytes) / unit.bytes, 'f', unit.decimals);
    };
    std::size_t i = 0;
    while (i + 1 < units.size() && rounded(units[i]).toDouble() >= 1000) {
        ++i;
    }
    QString number = rounded(units[i]);
    if (number.contains(u'.')) {
        while (number.endsWith(u'0')) {
            number.chop(1);
        }
        if (number.endsWith(u'.')) {
            number.chop(1);
        }
    }
    return number + u' ' + QLatin1String(units[i].name);
}

} // namespace stowlark
