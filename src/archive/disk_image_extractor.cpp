#include "archive/disk_image_extractor.h"

#include "archive/shell.h"
#include "archive/staging.h"
#include "foundation/child_process.h"
#include "foundation/copy_item.h"
#include "foundation/descriptor.h"
#include "foundation/remove_item.h"
#include "foundation/worker.h"

#include <sys/stat.h>

namespace stowlark {
namespace {

bool isHidden(const Path &item) {
    bool hidden = item.filename().native().starts_with('.');
#ifdef __APPLE__
    struct stat info {};
    hidden = hidden || (::lstat(item.c_str(), &info) == 0 && (info.st_flags & UF_HIDDEN) != 0);
#endif
    return hidden;
}

void copyVisibleItems(const Path &volume, const Path &outputDir) {
    for (const std::string &name : namesIn(volume)) {
        if (!isHidden(volume / name)) {
            copyItem(volume / name, outputDir / name);
        }
    }
}

bool isOrdinaryFolder(const Path &folder) {
    struct stat info {};
    struct stat parent {};
    return ::lstat(folder.c_str(), &info) == 0 && ::stat(folder.parent_path().c_str(), &parent) == 0 &&
           info.st_dev == parent.st_dev;
}

/// Ignores what goes wrong.
void detach(const Path &hdiutil, const Path &mountPoint, std::vector<std::string> options) {
    options.insert(options.begin(), {"detach", mountPoint.native()});
    runChildQuietly({.tool = hdiutil, .arguments = std::move(options)});
    // What is still mounted may be writable: removing it would empty the user's image.
    if (isOrdinaryFolder(mountPoint)) {
        removeOwnFolder(mountPoint);
    }
}

} // namespace

QCoro::Task<> runDMGExtract(Tools tools, Path archive, Path outputDir) {
    auto createMountPoint = [] { return createTemporaryFolder("Crateloom-dmg-"); };
    const Path mountPoint = co_await onWorker(std::move(createMountPoint));
    std::vector<std::string> args{"attach",    archive.native(), "-mountpoint", mountPoint.native(),
                                  "-nobrowse", "-quiet",         "-noverify"};
    co_await shell(tools.hdiutil, std::move(args));
    auto copyAndDetach = [hdiutil = tools.hdiutil, mountPoint, outputDir] {
        try {
            copyVisibleItems(mountPoint, outputDir);
        } catch (...) {
            detach(hdiutil, mountPoint, {"-quiet", "-force"});
            throw;
        }
        detach(hdiutil, mountPoint, {"-quiet"});
    };
    co_await onWorker(std::move(copyAndDetach));
}

} // namespace stowlark
