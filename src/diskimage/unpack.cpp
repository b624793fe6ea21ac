#include "diskimage/unpack.h"

#include "diskimage/free_space.h"
#include "diskimage/hfs_reader.h"
#include "diskimage/hfs_values.h"
#include "foundation/descriptor.h"
#include "foundation/errors.h"

#include <array>
#include <cerrno>
#include <climits>
#include <set>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace stowlark {
namespace {

using Action = PlatformError::Action;

constexpr std::size_t longestList = 256 << 20; ///< bytes; paths of folders deep in each other add up

/// Writes below one folder, following no link.
class Unpacking {
public:
    Unpacking(HfsReader &volume, const Path &folder)
        : volume_(volume)
        , path_(folder)
        , root_(openFolder(AT_FDCWD, folder.c_str())) {
        check(root_.get(), {});
    }

    AttachedItems run() {
        folders_.push_back({.id = hfs::rootFolder, .path = {}});
        for (std::size_t next = 0; next < folders_.size(); ++next) {
            unpackFolder(Folder(folders_[next])); // the list grows meanwhile
        }
        for (auto at = folders_.rbegin(); at + 1 != folders_.rend(); ++at) {
            const Descriptor folder = open(at->path);
            check(::fchmod(folder.get(), permissions(at->mode, 0755)), at->path);
            setDate(folder.get(), at->modified, at->path);
        }
        return std::move(made_);
    }

private:
    struct Folder {
        std::uint32_t id;
        std::string path; ///< with a slash at its end; empty for the volume's root
        std::uint16_t mode = 0;
        std::uint32_t modified = 0;
    };

    void unpackFolder(const Folder &folder) {
        if (!seen_.insert(folder.id).second) {
            throw ImageError::damaged();
        }
        const Descriptor opened = open(folder.path);
        for (const HfsReader::Item &item : volume_.children(folder.id)) {
            const std::string name = fileName(item.name);
            const std::string path = folder.path + name;
            listed_ += path.size();
            if (listed_ > longestList) {
                throw ImageError(
                    QStringLiteral("The disk image holds too many items, or too deep in folders."));
            }
            made_.push_back(item.isFolder ? path + '/' : path);
            if (item.isFolder) {
                check(::mkdirat(opened.get(), name.c_str(), 0700), path);
                folders_.push_back({item.id, made_.back(), item.mode, item.modified});
            } else if (S_ISLNK(item.mode)) {
                makeLink(item, opened.get(), name, path);
            } else {
                makeFile(item, opened.get(), name, path);
            }
        }
    }

    /// Nothing runs with another user's rights because an image says so.
    static mode_t permissions(std::uint16_t mode, mode_t ifNone) { return mode == 0 ? ifNone : mode & 0777; }

    void check(int result, const std::string &path) const {
        if (result < 0) {
            throw PlatformError(Action::write, path_ / path, errno);
        }
    }

    Descriptor open(const std::string &path) const {
        Descriptor folder = openFolderBelow(root_.get(), path.empty() ? "." : path);
        check(folder.get(), path);
        return folder;
    }

    void setDate(int file, std::uint32_t hfsDate, const std::string &path) const {
        const timespec date{static_cast<time_t>(unixSeconds(hfsDate)), 0};
        const std::array<timespec, 2> dates{date, date};
        check(::futimens(file, dates.data()), path);
    }

    void makeLink(const HfsReader::Item &item, int folder, const std::string &name, const std::string &path) {
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
        check(::symlinkat(target.c_str(), folder, name.c_str()), path);
        const timespec date{static_cast<time_t>(unixSeconds(item.modified)), 0};
        const std::array<timespec, 2> dates{date, date};
        check(::utimensat(folder, name.c_str(), dates.data(), AT_SYMLINK_NOFOLLOW), path);
    }

    void makeFile(const HfsReader::Item &item, int folder, const std::string &name, const std::string &path) {
        const Descriptor file(
            ::openat(folder, name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600));
        check(file.get(), path);
        volume_.readContents(item, [&](std::uint64_t offset, ByteSpan bytes) {
            while (!bytes.empty()) {
                const ssize_t count =
                    ::pwrite(file.get(), bytes.data(), bytes.size(), static_cast<off_t>(offset));
                if (count < 0 && errno == EINTR) {
                    continue;
                }
                check(count < 0 ? -1 : 0, path);
                offset += static_cast<std::uint64_t>(count);
                bytes = bytes.subspan(static_cast<std::size_t>(count));
            }
        });
        check(::ftruncate(file.get(), static_cast<off_t>(item.size)), path);
        check(::fchmod(file.get(), permissions(item.mode, 0644)), path);
        setDate(file.get(), item.modified, path);
    }

    HfsReader &volume_;
    Path path_;
    Descriptor root_;
    std::vector<Folder> folders_; ///< each after the one that holds it
    std::set<std::uint32_t> seen_;
    AttachedItems made_;
    std::size_t listed_ = 0; ///< bytes of their paths
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
    requireSpace(volume.storedBytes(), folder);
    return Unpacking(volume, folder).run();
}

} // namespace stowlark
