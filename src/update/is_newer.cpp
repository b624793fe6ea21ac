#include "update/is_newer.h"

#include <QList>

#include <charconv>
#include <optional>

namespace stowlark {
namespace {

/// One optional sign and ASCII digits, nothing else.
std::optional<qint64> number(QStringView piece) {
    if (piece.startsWith(u'+')) {
        piece = piece.sliced(1);
        if (piece.startsWith(u'-')) {
            return std::nullopt;
        }
    }
    const QByteArray text = piece.toLatin1();
    qint64 value = 0;
    const auto [end, error] = std::from_chars(text.begin(), text.end(), value);
    return error == std::errc() && end == text.end() ? std::optional(value) : std::nullopt;
}

QList<qint64> numbers(QStringView version) {
    QList<qint64> result;
    for (const QStringView piece : version.tokenize(u'.', Qt::SkipEmptyParts)) {
        if (const std::optional<qint64> value = number(piece)) {
            result += *value;
        }
    }
    return result;
}

} // namespace

bool isNewer(QStringView candidate, QStringView reference) {
    QList<qint64> a = numbers(candidate);
    QList<qint64> b = numbers(reference);
    const qsizetype length = qMax(a.size(), b.size());
    a.resize(length); // with zeros
    b.resize(length);
    return b < a;
}

} // namespace stowlark
