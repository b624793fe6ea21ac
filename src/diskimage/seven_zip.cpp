#include "diskimage/seven_zip.h"

#include "diskimage/free_space.h"
#include "diskimage/image_error.h"
#include "diskimage/put_right.h"
#include "foundation/child_process.h"
#include "foundation/descriptor.h"
#include "foundation/remove_item.h"
#include "foundation/temporary_file.h"

#include <QByteArray>
#include <QRegularExpression>
#include <QString>

#include <algorithm>
#include <cerrno>
#include <optional>

#include <fcntl.h>
#include <sys/stat.h>

namespace stowlark {
namespace {

Path findSevenZip() {
    for (const char *const name : {"7z", "7zz"}) {
        for (const char *const folder : {"/usr/local/bin/", "/usr/bin/", "/bin/"}) {
            Path candidate = Path(folder) / name;
            std::error_code ignored;
            if (std::filesystem::exists(candidate, ignored)) {
                return candidate;
            }
        }
    }
    throw ImageError(
        QStringLiteral("This kind of disk image can only be unpacked with 7z, which isn’t installed."));
}

/// Runs 7-Zip on an image, in a folder. Returns what it wrote; throws an ImageError with the errors in that
/// if it fails.
QString run(const Path &tool, std::vector<std::string> arguments, const Path &image, const Path &folder) {
    // Names mean themselves, not patterns. That is also why the folder to unpack into is the working one.
    arguments.insert(arguments.end(), {"-spd", image.native()});
    const Descriptor output = unlinkedTemporaryFile(O_APPEND);
    const bool succeeded = runChildInto({.tool = tool,
                                         .arguments = std::move(arguments),
                                         .workingDirectory = folder,
                                         .writableFolders = {folder}},
                                        output.get());
    QString text = QString::fromUtf8(shownContents(output.get())).trimmed();
    if (!succeeded) {
        static const QRegularExpression emptyLines(QStringLiteral("\n\\s*\n"));
        throw ImageError(QStringLiteral("The disk image “%1” couldn’t be unpacked. 7z says:\n%2")
                             .arg(displayText(lastPathComponent(image)),
                                  text.mid(std::max<qsizetype>(text.indexOf(u"ERROR"), 0))
                                      .replace(emptyLines, QStringLiteral("\n"))));
    }
    return text;
}

/// What 7-Zip says of an image without unpacking it.
struct Listing {
    QString kind;                      ///< the innermost format that it went into
    std::optional<std::uint64_t> size; ///< of all files, bytes
};

Listing list(const Path &tool, const Path &image, const Path &folder) {
    const QString text = run(tool, {"l", "-bd"}, image, folder);
    const qsizetype table = text.indexOf(u"\n   Date      Time");
    Listing listing;
    static const QRegularExpression type(QStringLiteral("^Type = (.+)$"),
                                         QRegularExpression::MultilineOption);
    for (auto at = type.globalMatch(text.left(table)); at.hasNext();) {
        listing.kind = at.next().captured(1);
    }
    static const QRegularExpression total(QStringLiteral("\\s(\\d+)\\s+\\d*\\s+\\d+ files(, \\d+ folders)?$"),
                                          QRegularExpression::MultilineOption);
    for (auto at = total.globalMatch(text); at.hasNext();) { // the last one; names may look like it
        listing.size = at.next().captured(1).toULongLong();
    }
    return listing;
}

bool isFolder(const Path &path) {
    return std::filesystem::is_directory(std::filesystem::symlink_status(path));
}

/// Moves what `inner` holds up into the folder that holds it, and removes it.
void moveUp(const Path &inner) {
    for (const std::string &name : namesIn(inner)) {
        std::filesystem::rename(inner / name, inner.parent_path() / name);
    }
    std::filesystem::remove(inner);
}

/// An HFS+ volume comes out with a folder around it, named after the volume unless no folder can be.
void takeVolumeOutOfItsFolder(const Path &folder) {
    const std::vector<std::string> names = namesIn(folder);
    if (names.size() == 1 && isFolder(folder / names.front())) {
        const Path aside = folder / ".stowlark-volume";
        std::filesystem::rename(folder / names.front(), aside);
        moveUp(aside);
    }
    // The contents of hard links are apart from their names, which 7-Zip leaves empty.
    const Path links = folder / "[HFS+ Private Data]";
    if (isFolder(links) && std::ranges::any_of(namesIn(links), [](const std::string &name) {
            return name.starts_with("iNode");
        })) {
        throw ImageError(
            QStringLiteral("The disk image holds hard links, in a way that can’t be unpacked here."));
    }
    removeOwnFolder(links);
    for (const std::string &name : namesIn(folder)) {
        if (name.starts_with(".HFS+ Private Directory Data")) {
            removeOwnFolder(folder / name);
        }
    }
}

/// Unpacks an image, or a partition that came out of one, and puts right what 7-Zip changed. Returns false if
/// it was no volume but a disk, of which the partitions are now there.
bool unpackVolume(const Path &tool, const Path &image, const Path &folder) {
    const Listing listing = list(tool, image, folder);
    requireSpace(listing.size.value_or(0), folder);
    run(tool, {"x", "-y", "-bd", "-bso0", "-snld20", "-sns-", "-xr!.fseventsd", "-xr!.Trashes"}, image,
        folder);
    putRight(folder);
    if (listing.kind == u"HFS") {
        takeVolumeOutOfItsFolder(folder);
    }
    return listing.kind == u"HFS" || listing.kind == u"APFS";
}

/// 7-Zip leaves the volumes of a disk with several partitions packed: "1.name.hfsx". Unpacks them, into a
/// folder each if there are several, and drops the other partitions.
void unpackPartitions(const Path &tool, const Path &folder) {
    static const QRegularExpression volumeName(QStringLiteral("^\\d+\\.(.*\\.)?(hfs|hfsx|apfs)$"));
    std::vector<std::string> volumes;
    for (std::string &name : namesIn(folder)) {
        if (std::filesystem::is_regular_file(std::filesystem::symlink_status(folder / name)) &&
            volumeName.match(displayText(name)).hasMatch()) {
            volumes.push_back(std::move(name));
        } else {
            removeItem(folder / name);
        }
    }
    for (const std::string &name : volumes) {
        const Path into = folder / ".stowlark-volume";
        std::filesystem::create_directory(into);
        if (!unpackVolume(tool, folder / name, into)) {
            throw ImageError::damaged();
        }
        std::filesystem::remove(folder / name);
        if (volumes.size() == 1) {
            moveUp(into);
        } else {
            std::filesystem::rename(into, folder / deletingPathExtension(name));
        }
    }
    if (volumes.empty()) {
        throw ImageError(QStringLiteral("The disk image holds no volume that can be unpacked here."));
    }
}

} // namespace

AttachedItems unpackWithSevenZip(const Path &image, const Path &folder) {
    const Path tool = findSevenZip();
    const Path aside = std::filesystem::canonical(folder) / ".stowlark-unpacking";
    std::filesystem::create_directory(aside);
    if (!unpackVolume(tool, std::filesystem::absolute(image), aside)) {
        unpackPartitions(tool, aside);
    }
    moveUp(aside);
    return everythingIn(folder);
}

} // namespace stowlark
