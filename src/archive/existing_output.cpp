#include "archive/existing_output.h"

#include "foundation/errors.h"
#include "foundation/remove_item.h"

#include <algorithm>
#include <set>

#include <sys/stat.h>

namespace stowlark {
namespace {

/// Compares by what the file system says, not by names: they may differ in case, or lead through links or
/// mounts. An item that is a link to the output counts too: its target would be gone.
class Output {
public:
    explicit Output(const struct stat &info)
        : info_(info) {}

    bool isOrHolds(const Path &item) {
        return isAt(item) || (S_ISDIR(info_.st_mode) && holdsFolder(parentFolder(item)));
    }

private:
    bool isAt(const Path &item) const {
        struct stat info {};
        const auto isIt = [&](int result) {
            return result == 0 && info.st_dev == info_.st_dev && info.st_ino == info_.st_ino;
        };
        return isIt(::lstat(item.c_str(), &info)) || isIt(::stat(item.c_str(), &info));
    }

    bool holdsFolder(const Path &folder) {
        if (!checked_.insert(folder).second) {
            return false;
        }
        std::error_code error;
        Path place = std::filesystem::canonical(folder, error);
        while (!error && !isAt(place)) {
            if (place == place.parent_path()) {
                return false;
            }
            place = place.parent_path();
        }
        return !error;
    }

    struct stat info_;
    std::set<Path> checked_; ///< folders that are known not to be in it
};

} // namespace

void removeExistingOutput(const Path &output, const std::vector<Path> &files) {
    struct stat info {};
    if (::lstat(output.c_str(), &info) != 0) {
        return;
    }
    Output existing(info);
    if (std::ranges::any_of(files, [&](const Path &file) { return existing.isOrHolds(file); })) {
        throw PlatformError(PlatformError::Action::remove, output,
                            QStringLiteral("it is, or holds, one of the items to archive"));
    }
    removeItem(output);
}

} // namespace stowlark
