#include "archive/shell.h"

#include "archive/archive_error.h"
#include "foundation/child_process.h"

#include <QStringDecoder>

namespace stowlark {
namespace {

QString trimmedText(const QByteArray &output) {
    QStringDecoder decode(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decode(output);
    return decode.hasError() ? QString() : text.trimmed();
}

} // namespace

QCoro::Task<> shell(Path tool, std::vector<std::string> args, std::optional<Path> cwd,
                    std::optional<std::map<std::string, std::string>> env,
                    std::vector<Path> writableFolders) {
    Command command{.tool = std::move(tool),
                    .arguments = std::move(args),
                    .workingDirectory = std::move(cwd),
                    .environment = std::move(env).value_or(std::map<std::string, std::string>()),
                    .writableFolders = std::move(writableFolders)};
    const ChildEnd end = co_await runChild(std::move(command));
    if (!end.succeeded) {
        throw ArchiveError::commandFailed(trimmedText(end.output));
    }
}

} // namespace stowlark
