#include "diskimage/hfs_values.h"

#include "diskimage/image_error.h"
#include "foundation/path_name.h"

#include <QList>
#include <QStringDecoder>

#include <algorithm>
#include <limits>

namespace stowlark {
namespace {

constexpr std::int64_t between1904And1970 = 2082844800; ///< seconds

/// Volumes leave these as they are.
bool staysAsItIs(char32_t character) {
    return (character >= 0x2000 && character <= 0x2FFF) || (character >= 0xF900 && character <= 0xFAFF) ||
           (character >= 0x2F800 && character <= 0x2FAFF);
}

QString normalized(const QString &text, QString::NormalizationForm form) {
    QString result;
    QString run;
    const auto endRun = [&] {
        result += run.normalized(form, QChar::Unicode_3_2);
        run.clear();
    };
    for (const uint code : text.toUcs4()) {
        const char32_t character = code;
        if (staysAsItIs(character)) {
            endRun();
            result += QString::fromUcs4(&character, 1);
        } else {
            run += QString::fromUcs4(&character, 1);
        }
    }
    endRun();
    return result;
}

} // namespace

std::u16string hfsName(const std::string &name) {
    std::u16string stored;
    if (std::ranges::all_of(name, [](char byte) { return static_cast<unsigned char>(byte) < 0x80; })) {
        stored.assign(name.begin(), name.end());
    } else {
        QStringDecoder decode(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
        const QString text = decode(QByteArray::fromStdString(name));
        if (decode.hasError()) {
            throw ImageError(
                QStringLiteral("“%1” can’t be stored in a disk image because its name isn’t UTF-8.")
                    .arg(displayText(name)));
        }
        stored = normalized(text, QString::NormalizationForm_D).toStdU16String();
    }
    if (stored.size() > 255) {
        throw ImageError(QStringLiteral("“%1” can’t be stored in a disk image because its name is too long.")
                             .arg(displayText(name)));
    }
    std::ranges::replace(stored, u':', u'/'); // no file name holds a "/"
    return stored;
}

QString composed(const QString &name) {
    return normalized(name, QString::NormalizationForm_C);
}

std::string fileName(std::u16string_view hfsName) {
    QString text = QString::fromUtf16(hfsName.data(), static_cast<qsizetype>(hfsName.size()));
    text.replace(u'/', u':');
    std::string name = composed(text).toStdString();
    const bool isStoredSo = hfsName.find(u':') == std::u16string_view::npos;
    if (!isStoredSo || name.empty() || name == "." || name == ".." || name.find('\0') != std::string::npos) {
        throw ImageError::damaged();
    }
    return name;
}

std::uint32_t hfsDate(std::int64_t unixSeconds) {
    constexpr std::int64_t last = std::numeric_limits<std::uint32_t>::max();
    return static_cast<std::uint32_t>(
        std::clamp<std::int64_t>(unixSeconds, -between1904And1970, last - between1904And1970) +
        between1904And1970);
}

std::int64_t unixSeconds(std::uint32_t hfsDate) {
    return static_cast<std::int64_t>(hfsDate) - between1904And1970;
}

} // namespace stowlark
