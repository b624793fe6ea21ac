#include "fuzz/fuzz_input.h"
#include "update/app_release.h"

#include <QJsonDocument>

using namespace stowlark;

/// What is decoded is JSON for others too, and comes back from its own encoding.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const QByteArray json = FuzzInput(data, size).rest();
    const std::optional<AppRelease> release = AppRelease::decode(json);
    if (release) {
        REQUIRE(!QJsonDocument::fromJson(json).isNull() || json.startsWith("\xEF\xBB\xBF"));
        REQUIRE(AppRelease::decode(release->encode()) == release);
        REQUIRE(AppRelease::decode("\xEF\xBB\xBF" + release->encode() + "\n ") == release);
        REQUIRE(!AppRelease::decode(json + '}'));
    }
    // The bytes as values: always decoded if they are text.
    const AppRelease whole{.version = QString::fromUtf8(json), .downloadURL = QString::fromLatin1(json)};
    REQUIRE(AppRelease::decode(whole.encode()) == whole);
    return 0;
}
