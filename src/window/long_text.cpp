#include "window/long_text.h"

namespace stowlark {

QStringList linesOfLongText(const QString &text) {
    constexpr qsizetype shortText = 1500;
    constexpr qsizetype fewLines = 12;
    constexpr qsizetype longestLine = 1000;
    QStringList lines;
    if (text.size() <= shortText && text.count(u'\n') < fewLines) {
        return lines;
    }
    for (const QString &line : text.split(u'\n')) {
        qsizetype begin = 0;
        do {
            qsizetype end = begin + longestLine;
            if (end < line.size() && line[end].isLowSurrogate()) {
                ++end; // not between the halves of a character
            }
            lines += line.mid(begin, end - begin);
            begin = end;
        } while (begin < line.size());
    }
    return lines;
}

} // namespace stowlark
