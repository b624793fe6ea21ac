#pragma once

#include "foundation/path_name.h"

#include <QByteArray>

#include <optional>
#include <vector>

#include <sys/stat.h>

/// Archives as no honest program writes them: names, kinds and order of the entries are whatever a test says.
namespace stowlark {

struct Item {
    QByteArray name;
    QByteArray contents{};           ///< or the target of a link
    unsigned mode = S_IFREG | 0644U; ///< as of stat
    bool isHardLink = false;
};
using Items = std::vector<Item>;

/// Some of what an archive is made of has no checksum over it yet: `seal` adds those.
struct Writer {
    const char *format;
    std::vector<const char *> extensions; ///< all that are taken for the format, in turn
    /// None if the format cannot tell of such items.
    std::optional<QByteArray> (*pack)(const Items &items);
    QByteArray (*seal)(const QByteArray &packed);
    /// Complete archives; none if there is no such thing here.
    std::optional<QByteArray> (*encrypted)();
    std::optional<QByteArray> (*bomb)(qsizetype zeros); ///< one file
};

extern const Writer zipWriter;
extern const Writer tarWriter;
extern const Writer sevenZipWriter;
extern const Writer rarWriter;
/// As the stand-in for hdiutil reads them itself, and as it gives them to 7z.
extern const Writer diskImageWriter;
extern const Writer rawDiskImageWriter;

/// Entries that all have the same place in the archive, and one with another name there.
std::vector<QByteArray> overlappingZips();

} // namespace stowlark
