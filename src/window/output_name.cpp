#include "window/output_name.h"

#include <algorithm>

namespace stowlark {

bool isBlank(QStringView text) {
    return std::ranges::all_of(text,
                               [](QChar c) { return c == u'\t' || c.category() == QChar::Separator_Space; });
}

QString outputName(const QString &typed, const QString &extension) {
    QString base = isBlank(typed) ? QStringLiteral("archive") : typed;
    base.replace(u'/', u':'); // as file managers of macOS store it
    base.remove(QChar::Null); // paths end at it
    return base + u'.' + extension;
}

} // namespace stowlark
