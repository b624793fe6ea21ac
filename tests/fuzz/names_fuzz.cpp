#include "archive/extraction.h"
#include "foundation/byte_count.h"
#include "foundation/file_url.h"
#include "fuzz/fuzz_input.h"
#include "window/output_name.h"
#include "window/uri_list.h"

#include <cmath>
#include <limits>

using namespace stowlark;

namespace {

void checkUrl(const QUrl &url) {
    if (!isFileUrl(url)) {
        return;
    }
    const Path file = path(url);
    REQUIRE(file.is_absolute() && file.native().find('\0') == std::string::npos);
    REQUIRE(file == "/" || !file.native().ends_with('/'));
    REQUIRE(isFileUrl(fileUrl(file)) && path(fileUrl(file)) == file);
}

void checkPath(const std::string &bytes) { // without NUL
    const Path file = '/' + bytes;
    REQUIRE(isFileUrl(fileUrl(file)));
    const auto end = file.native().find_last_not_of('/');
    REQUIRE(path(fileUrl(file)).native() ==
            (end == std::string::npos ? "/" : file.native().substr(0, end + 1)));
}

void checkList(const QByteArray &list) {
    std::optional<QUrl> last;
    QList<QUrl> all;
    for (qsizetype at = 0; at < list.size();) {
        const qsizetype before = at;
        if (const auto file = nextFile(list, at)) {
            checkUrl(*file);
            last = file;
            all += *file;
        }
        REQUIRE(at > before && at <= list.size());
    }
    REQUIRE(lastFile(list) == last);
    const QByteArray again = uriList(all);
    qsizetype at = 0;
    for (const QUrl &url : all) {
        REQUIRE(nextFile(again, at) == url);
    }
    REQUIRE(at == again.size());
}

/// Names that never lead out of a folder.
void checkNames(const std::string &bytes, const QString &typed) {
    const std::string name = lastPathComponent('/' + bytes);
    const std::string folder = extractionFolderName(name);
    REQUIRE(!folder.empty() && (name == "/" || folder.find('/') == std::string::npos));
    REQUIRE(name == "." || name == ".." || (folder != "." && folder != ".."));
    REQUIRE(name.starts_with(folder));
    const std::string output = outputName(typed, QStringLiteral("zip")).toStdString();
    REQUIRE(output.size() >= 4 && output.ends_with(".zip"));
    REQUIRE(output.find('/') == std::string::npos && output.find('\0') == std::string::npos);
}

/// "1.2 MB" as a number of bytes.
double bytesIn(const QString &text) {
    const QStringList parts = text.split(u' ');
    REQUIRE(parts.size() == 2);
    const qsizetype unit = QStringList{QStringLiteral("KB"), QStringLiteral("MB"), QStringLiteral("GB"),
                                       QStringLiteral("TB"), QStringLiteral("PB")}
                               .indexOf(parts[1]);
    const double number = parts[0] == u"Zero" ? 0 : parts[0].toDouble();
    REQUIRE(unit >= 0 || parts[1].startsWith(u"byte"));
    REQUIRE(number < 1000 || unit == 4);
    return unit < 0 ? number : number * std::pow(1000, static_cast<double>(unit) + 1);
}

/// Near to the number, and never fewer for more.
void checkByteCount(std::int64_t one, std::int64_t other) {
    one &= std::numeric_limits<std::int64_t>::max();
    other &= std::numeric_limits<std::int64_t>::max();
    const double a = bytesIn(byteCountText(one));
    const double b = bytesIn(byteCountText(other));
    REQUIRE(one >= other ? a >= b : a <= b);
    REQUIRE(std::abs(a - static_cast<double>(one)) <= std::max(500.0, 0.051 * static_cast<double>(one)));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    FuzzInput input(data, size);
    checkByteCount(input.number() >> (input.byte() % 64), input.number() >> (input.byte() % 64));
    const QByteArray text = input.rest();
    checkUrl(QUrl::fromEncoded(text));
    checkUrl(QUrl(QString::fromUtf8(text)));
    checkList(text);
    const QByteArray line = input.text();
    checkPath(line.toStdString());
    checkNames(line.toStdString(), QString::fromUtf8(text));
    return 0;
}
