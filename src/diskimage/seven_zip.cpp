#include "diskimage/seven_zip.h"

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
#include <sys/statvfs.h>

namespace stowlark {
namespace {

Path findSevenZip() {
    for (const char *const name : {"7z", "7zz"}) {
        for (const char *const folder : {"/usr/local/bin/", "/usr/bin/", "/bin/"}) {
            const Path candidate = Path(folder) / name;
            std::error_code ignored;
            if (std::filesystem::exists(candidate, ignored)) {
                return candidate;
            }
        }
    }
    throw ImageError(
        QStringLiteral("This kind of disk image can only be unpacked with 7z, which isn’t installed."));
}

/// Runs 7-Zip on an image. Returns what it wrote; throws an ImageError with the errors in that if it fails.
QString run(const Path &tool, std::vector<std::string> arguments, const Path &image) {
    arguments.push_back(image.native());
    const Descriptor output = unlinkedTemporaryFile(O_APPEND);
    const bool succeeded = runChildInto({.tool = tool, .arguments = std::move(arguments)}, output.get());
    const QString text = QString::fromUtf8(wholeContents(output.get())).trimmed();
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

Listing list(const Path &tool, const Path &image) {
    const QString text = run(tool, {"l", "-bd"}, image);
    const qsizetype table = text.indexOf(u"\n   Date      Time");
    Listing listing;
    static const QRegularExpression type(QStringLiteral("^Type = (.+)$"),
                                         QRegularExpression::MultilineOption);
    for (auto at = type.globalMatch(text.left(table)); at.hasNext();) {
        listing.kind = at.next().captured(1);
    }
    static const QRegularExpression total(
        QStringLiteral("\\s(\\d+)\\s+\\d*\\s+\\d+ files(, \\d+ folders)?$"));
    if (const auto match = total.match(text); match.hasMatch()) {
        listing.size = match.captured(1).toULongLong();
    }
    return listing;
}

void checkSpace(const Listing &listing, const Path &folder) {
    struct statvfs info {};
    if (listing.size && ::statvfs(folder.c_str(), &info) == 0 &&
        *listing.size / info.f_frsize >= info.f_bavail) {
        throw ImageError(QStringLiteral("There isn’t enough space to unpack the disk image."));
    }
}

bool isFolder(const Path &path) {
    return std::filesystem::is_directory(std::filesystem::symlink_status(path));
}

/// Moves what `folder` holds up into `target`, and removes it.
void moveUp(const Path &folder, const Path &target) {
    for (const std::string &name : namesIn(folder)) {
        std::filesystem::rename(folder / name, target / name);
    }
    std::filesystem::remove(folder);
}

/// An HFS+ volume comes out with a folder around it, named after the volume unless no folder can be.
void takeVolumeOutOfItsFolder(const Path &folder) {
    const std::vector<std::string> names = namesIn(folder);
    if (names.size() == 1 && isFolder(folder / names.front())) {
        const Path aside = folder / ".stowlark-volume";
        std::filesystem::rename(folder / names.front(), aside);
        moveUp(aside, folder);
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

void unpack(const Path &tool, const Path &image, const Path &folder);

/// 7-Zip leaves the volumes of a disk with several partitions packed: "1.name.hfsx". Unpacks them, into a
/// folder each if there are several, and drops the other partitions.
void unpackVolumes(const Path &tool, const Path &folder) {
    static const QRegularExpression volume(QStringLiteral("^\\d+\\.(.*\\.)?(hfs|hfsx|apfs)$"));
    std::vector<std::string> volumes;
    for (std::string &name : namesIn(folder)) {
        if (!isFolder(folder / name) && volume.match(displayText(name)).hasMatch()) {
            volumes.push_back(std::move(name));
        } else {
            removeItem(folder / name);
        }
    }
    if (volumes.empty()) {
        throw ImageError(QStringLiteral("The disk image holds no volume that can be unpacked here."));
    }
    for (const std::string &name : volumes) {
        const Path into = folder / deletingPathExtension(name);
        std::filesystem::create_directory(into);
        unpack(tool, folder / name, into);
        std::filesystem::remove(folder / name);
        if (volumes.size() == 1) {
            moveUp(into, folder);
        }
    }
}

void unpack(const Path &tool, const Path &image, const Path &folder) {
    const Listing listing = list(tool, image);
    checkSpace(listing, folder);
    run(tool,
        {"x", "-y", "-bd", "-bso0", "-snld20", "-sns-", "-xr!.fseventsd", "-xr!.Trashes",
         "-o" + folder.native()},
        image);
    putRight(folder);
    if (listing.kind == u"HFS") {
        takeVolumeOutOfItsFolder(folder);
    } else if (listing.kind != u"APFS") {
        unpackVolumes(tool, folder);
    }
}

} // namespace

AttachedItems unpackWithSevenZip(const Path &image, const Path &folder) {
    const Path tool = findSevenZip();
    const Path aside = std::filesystem::absolute(folder) / ".stowlark-unpacking";
    std::filesystem::create_directory(aside);
    unpack(tool, std::filesystem::absolute(image), aside);
    moveUp(aside, folder);
    return everythingIn(folder);
}

} // namespace stowlark
