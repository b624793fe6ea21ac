#include "diskimage/unpack.h"

#include "diskimage/hfs_reader.h"
#include "diskimage/hfs_values.h"
#include "foundation/errors.h"

#include <cerrno>
#include <climits>
#include <set>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace stowlark {
namespace {

using Action = PlatformError::Action;

/// Writes below one folder, by paths relative to it. The names on these paths are those of folders that it
/// made itself, so they lead nowhere else.
class Unpacking {
public:
    Unpacking(HfsReader &volume, const Path &folder)
        : volume_(volume)
        , folder_(folder)
        , opened_(openFolder(AT_FDCWD, folder.c_str())) {
        if (!opened_) {
            throw PlatformError(Action::openFolder, folder, errno);
        }
    }

    AttachedItems run() {
        AttachedItems made;
        std::vector<Folder> folders{{.id = HfsReader::rootID, .path = {}}};
        for (std::size_t next = 0; next < folders.size(); ++next) {
            const Folder parent = folders[next];
            if (!seen_.insert(parent.id).second) {
                throw ImageError::damaged();
            }
            for (const HfsReader::Item &item : volume_.children(parent.id)) {
                const std::string path = parent.path + fileName(item.name);
                made.push_back(item.isFolder ? path + '/' : path);
                if (item.isFolder) {
                    check(::mkdirat(opened_.get(), path.c_str(), 0700), path);
                    folders.push_back({item.id, path + '/', item.mode, item.modified});
                } else {
                    S_ISLNK(item.mode) ? makeLink(item, path) : makeFile(item, path);
                }
            }
        }
        for (auto at = folders.rbegin(); at + 1 != folders.rend(); ++at) {
            check(::fchmodat(opened_.get(), at->path.c_str(), at->mode & permissions, 0), at->path);
            setDate(at->modified, at->path);
        }
        return made;
    }

private:
    struct Folder {
        std::uint32_t id;
        std::string path; ///< with a slash at its end; empty for the volume's root
        std::uint16_t mode = 0;
        std::uint32_t modified = 0;
    };

    /// Nothing runs with another user's rights because an image says so.
    static constexpr mode_t permissions = 0777;

    void check(int result, const std::string &path) const {
        if (result < 0) {
            throw PlatformError(Action::write, folder_ / path, errno);
        }
    }

    void setDate(std::uint32_t hfsDate, const std::string &path) const {
        const timespec date{static_cast<time_t>(unixSeconds(hfsDate)), 0};
        const timespec dates[]{date, date};
        check(::utimensat(opened_.get(), path.c_str(), dates, AT_SYMLINK_NOFOLLOW), path);
    }

    void makeLink(const HfsReader::Item &item, const std::string &path) {
        if (item.size >= PATH_MAX) {
            throw ImageError::damaged();
        }
        std::string target(item.size, '\0');
        volume_.readContents(item, [&target](std::uint64_t offset, ByteSpan bytes) {
            std::ranges::copy(bytes, target.begin() + static_cast<std::ptrdiff_t>(offset));
        });
        if (target.empty() || target.find('\0') != std::string::npos) {
            throw ImageError::damaged();
        }
        check(::symlinkat(target.c_str(), opened_.get(), path.c_str()), path);
        setDate(item.modified, path);
    }

    void makeFile(const HfsReader::Item &item, const std::string &path) {
        const Descriptor file(::openat(opened_.get(), path.c_str(),
                                       O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600));
        check(file.get(), path);
        volume_.readContents(item, [&](std::uint64_t offset, ByteSpan bytes) {
            while (!bytes.empty()) {
                const ssize_t count =
                    ::pwrite(file.get(), bytes.data(), bytes.size(), static_cast<off_t>(offset));
                if (count < 0 && errno == EINTR) {
                    continue;
                }
                check(static_cast<int>(count), path);
                offset += static_cast<std::uint64_t>(count);
                bytes = bytes.subspan(static_cast<std::size_t>(count));
            }
        });
        check(::ftruncate(file.get(), static_cast<off_t>(item.size)), path);
        check(::fchmod(file.get(), item.mode == 0 ? 0644 : item.mode & permissions), path);
        setDate(item.modified, path);
    }

    HfsReader &volume_;
    Path folder_;
    Descriptor opened_;
    std::set<std::uint32_t> seen_;
};

/// The one partition that holds a volume known here.
UdifReader::Partition volumePartition(UdifReader &image) {
    std::vector<UdifReader::Partition> found = image.partitions();
    std::erase_if(found, [&image](const auto &partition) { return !HfsReader::isVolume(image, partition); });
    if (found.size() != 1) {
        throw UnsupportedImage();
    }
    return found.front();
}

} // namespace

AttachedItems unpackVolume(const Path &image, const Path &folder) {
    UdifReader reader(image);
    HfsReader volume(reader, volumePartition(reader));
    return Unpacking(volume, folder).run();
}

} // namespace stowlark
