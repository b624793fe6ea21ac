#include "app/invocation.h"

#include "foundation/file_url.h"

#include <QCommandLineParser>
#include <QUrl>

#include <filesystem>
#include <iostream>
#include <optional>

namespace stowlark {
namespace {

/// A URL, or the bytes of a path.
std::optional<QUrl> fileFrom(const QByteArray &argument) {
    const QUrl url = QUrl::fromEncoded(argument);
    if (isFileUrl(url)) {
        return fileUrl(path(url));
    }
    if (argument.isEmpty() || argument.contains("://")) {
        return std::nullopt;
    }
    std::error_code ignored;
    const Path absolute = std::filesystem::absolute(argument.toStdString(), ignored);
    if (absolute.empty()) { // the current folder is gone
        return std::nullopt;
    }
    const Path folder = std::filesystem::canonical(absolute.parent_path(), ignored);
    const bool isPlain = absolute.lexically_normal() == absolute;
    return fileUrl(isPlain || ignored ? absolute : folder / absolute.filename());
}

QStringList urisOf(const QStringList &arguments) {
    QStringList uris;
    for (const QString &argument : arguments) {
        if (const auto file = fileFrom(argument.toLatin1())) {
            uris += QString::fromLatin1(file->toEncoded());
        } else {
            std::cerr << "Not a file: " << argument.toLatin1().constData() << '\n';
        }
    }
    return uris;
}

} // namespace

Invocation invocation(std::span<char *const> arguments) {
    const QCommandLineOption service(QStringLiteral("extract-files"),
                                     QStringLiteral("Hand the first of the files over, to be extracted."));
    const QCommandLineOption compress(QStringLiteral("compress"), QStringLiteral("Show the Compress pane."));
    const QCommandLineOption extract(QStringLiteral("extract"), QStringLiteral("Show the Extract pane."));
    QCommandLineOption byBus(QStringLiteral("gapplication-service"));
    byBus.setFlags(QCommandLineOption::HiddenFromHelp);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Makes and unpacks archives with the tools you already have."));
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")},
                                  QStringLiteral("Show this help."));
    const QCommandLineOption version = parser.addVersionOption();
    parser.addOptions({help, service, compress, extract, byBus});
    parser.addPositionalArgument(QStringLiteral("FILE"), QStringLiteral("The archive to extract."),
                                 QStringLiteral("[FILE...]"));

    QStringList bytes{QCoreApplication::applicationName()}; // a character for each byte, whatever they encode
    for (const char *argument : arguments) {
        bytes += QString::fromLatin1(argument);
    }
    if (!parser.parse(bytes)) {
        std::cerr << parser.errorText().toLatin1().constData() << '\n';
        std::exit(EXIT_FAILURE); // NOLINT(concurrency-mt-unsafe): there is one thread yet
    }
    if (parser.isSet(help)) {
        parser.showHelp();
    }
    if (parser.isSet(version)) {
        parser.showVersion();
    }
    const QStringList uris = urisOf(parser.positionalArguments());
    if (parser.isSet(service) && !uris.isEmpty()) {
        return {Invocation::Kind::extractFiles, uris};
    }
    if (!uris.isEmpty()) {
        return {Invocation::Kind::open, uris};
    }
    for (const QCommandLineOption &pane : {compress, extract}) {
        if (parser.isSet(pane)) {
            return {.kind = Invocation::Kind::action, .action = pane.names().first()};
        }
    }
    return {};
}

} // namespace stowlark
