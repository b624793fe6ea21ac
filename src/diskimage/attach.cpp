#include "diskimage/attach.h"

#include "diskimage/attached_items.h"
#include "diskimage/image_error.h"
#include "diskimage/seven_zip.h"
#include "diskimage/unpack.h"
#include "foundation/descriptor.h"
#include "foundation/remove_item.h"

namespace stowlark {
namespace {

AttachedItems unpack(const Path &image, const Path &folder) {
    try {
        return unpackVolume(image, folder);
    } catch (const UnsupportedImage &) {
        return unpackWithSevenZip(image, folder);
    }
}

/// Ignores what goes wrong: something else has already.
void empty(const Path &folder) {
    for (const std::string &name : namesIn(folder)) {
        std::error_code ignored;
        if (!removeOwnFolder(folder / name)) {
            std::filesystem::remove(folder / name, ignored);
        }
    }
}

} // namespace

void attachImage(const AttachCommand &command) {
    if (!namesIn(command.mountPoint).empty()) {
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
