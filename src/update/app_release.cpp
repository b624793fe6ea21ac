#include "update/app_release.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

namespace stowlark {
namespace {

/// Looks for what QJsonDocument lets pass although JSON forbids it: control characters and unknown escapes in
/// strings, halves of surrogate pairs, and numbers as "1." Does not look at the order of the tokens.
bool hasOnlyTokensOfJson(const QByteArray &json) {
    static const QRegularExpression tokens(QStringLiteral(R"re((?xx)\A
        (?> [ \x20 \t \r \n { } \[ \] , : ]++
        |   true | false | null
        |   -? (?: 0 | [1-9] [0-9]*+ ) (?: \. [0-9]++ )? (?: [eE] [+-]? [0-9]++ )?
        |   " (?> [^ " \\ \x00-\x1F ]++
              |   \\ ["\\/bfnrt]
              |   \\u (?! [dD] [89a-fA-F] ) [0-9a-fA-F]{4}
              |   \\u [dD] [89abAB] [0-9a-fA-F]{2} \\u [dD] [c-fC-F] [0-9a-fA-F]{2}
              )*+ "
        )*+ \z)re"));
    return tokens.match(QString::fromLatin1(json)).hasMatch();
}

} // namespace

std::optional<AppRelease> AppRelease::decode(const QByteArray &json) {
    static const QByteArray mark("\xEF\xBB\xBF"); // of byte order, which QJsonDocument also drops from texts
    const QByteArray text = json.startsWith(mark) ? json.sliced(mark.size()) : json;
    if (!hasOnlyTokensOfJson(text)) {
        return std::nullopt;
    }
    const QJsonDocument document = QJsonDocument::fromJson(QByteArray(text).replace(mark, "\\uFEFF"));
    if (!document.isObject()) { // neither if the bytes are not UTF-8
        return std::nullopt;
    }
    const QJsonValue version = document[QLatin1String("version")];
    const QJsonValue notes = document[QLatin1String("releaseNotes")];
    const QJsonValue url = document[QLatin1String("downloadURL")];
    const QJsonValue date = document[QLatin1String("releaseDate")];
    const bool hasDate = date.isString();
    if (!version.isString() || !notes.isString() || !url.isString() ||
        !(hasDate || date.isNull() || date.isUndefined())) {
        return std::nullopt;
    }
    return AppRelease{.version = version.toString(),
                      .releaseNotes = notes.toString(),
                      .downloadURL = url.toString(),
                      .releaseDate = hasDate ? std::optional(date.toString()) : std::nullopt};
}

QByteArray AppRelease::encode() const {
    QJsonObject object{{QStringLiteral("version"), version},
                       {QStringLiteral("releaseNotes"), releaseNotes},
                       {QStringLiteral("downloadURL"), downloadURL}};
    if (releaseDate) {
        object[QLatin1String("releaseDate")] = *releaseDate;
    }
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

} // namespace stowlark
