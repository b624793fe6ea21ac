#include "archive/existing_output.h"

#include "foundation/errors.h"
#include "foundation/remove_item.h"

#include <algorithm>
#include <map>

namespace stowlark {
namespace {

/// Tells where items really are: links in the folders above them are resolved, the items themselves are not.
class RealPlaces {
public:
    Path of(const Path &item) {
        const Path folder = parentFolder(item);
        auto known = folders_.find(folder);
        if (known == folders_.end()) {
            std::error_code error;
            const Path real = std::filesystem::canonical(folder, error);
            known = folders_.emplace(folder, error ? folder : real).first;
        }
        return known->second / lastPathComponent(item);
    }

private:
    std::map<Path, Path> folders_;
};

bool isInside(const Path &item, const Path &place) {
    return std::mismatch(place.begin(), place.end(), item.begin(), item.end()).first == place.end();
}

} // namespace

void removeExistingOutput(const Path &output, const std::vector<Path> &files) {
    std::error_code error;
    if (!std::filesystem::exists(std::filesystem::symlink_status(output, error))) {
        return;
    }
    RealPlaces places;
    const Path place = places.of(output);
    if (std::ranges::any_of(files, [&](const Path &file) { return isInside(places.of(file), place); })) {
        throw PlatformError(PlatformError::Action::remove, output,
                            QStringLiteral("it is, or holds, one of the items to archive"));
    }
    removeItem(output);
}

} // namespace stowlark
