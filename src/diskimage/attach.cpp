#include "diskimage/attach.h"

#include "diskimage/attached_items.h"
#include "diskimage/image_error.h"
#include "diskimage/seven_zip.h"
#include "diskimage/unpack.h"
#include "foundation/descriptor.h"
#include "foundation/remove_item.h"

#include <cerrno>

#include <fcntl.h>

namespace stowlark {
namespace {

std::vector<FolderEntry> entriesOf(const Path &folder) {
    const Descriptor opened = openFolder(AT_FDCWD, folder.c_str());
    std::vector<FolderEntry> entries;
    const int error = opened ? readFolder(opened.get(), entries) : errno;
    if (error != 0) {
        throw PlatformError(PlatformError::Action::openFolder, folder, error);
    }
    return entries;
}

AttachedItems unpack(const Path &image, const Path &folder) {
    try {
        return unpackVolume(image, folder);
    } catch (const UnsupportedImage &) {
        return unpackWithSevenZip(image, folder);
    }
}

void empty(const Path &folder) {
    for (const FolderEntry &entry : entriesOf(folder)) {
        if (entry.isFolder) {
            removeOwnFolder(folder / entry.name);
        } else {
            removeItem(folder / entry.name);
        }
    }
}

} // namespace

void attachImage(const AttachCommand &command) {
    if (!entriesOf(command.mountPoint).empty()) {
        throw ImageError(
            QStringLiteral("A disk image can only be attached at an empty folder, and “%1” isn’t empty.")
                .arg(displayText(lastPathComponent(command.mountPoint))));
    }
    try {
        listAttached(unpack(command.image, command.mountPoint), command.mountPoint);
    } catch (...) {
        empty(command.mountPoint);
        throw;
    }
}

} // namespace stowlark
