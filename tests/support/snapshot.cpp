#include "support/snapshot.h"

#include "foundation/descriptor.h"
#include "support/test_folder.h"

#include <QCryptographicHash>

#include <algorithm>
#include <sstream>

#include <fcntl.h>
#include <sys/stat.h>
#ifdef __linux__
#include <sys/xattr.h>
#endif

namespace stowlark {
namespace {

std::string extendedAttributes(const Path &item) {
    std::string text;
#ifdef __linux__
    std::array<char, 4096> names{};
    std::array<char, 4096> value{};
    const ssize_t size = ::llistxattr(item.c_str(), names.data(), names.size());
    for (ssize_t at = 0; at < size; at += static_cast<ssize_t>(std::string(&names.at(at)).size()) + 1) {
        const ssize_t length = ::lgetxattr(item.c_str(), &names.at(at), value.data(), value.size());
        text += " " + std::string(&names.at(at)) + "=" + std::string(value.data(), length > 0 ? length : 0);
    }
#endif
    return text;
}

std::string describe(const Path &item, const struct stat &info, SnapshotOptions options) {
    std::ostringstream text;
    if (S_ISREG(info.st_mode)) {
        text << "file " << info.st_size << ' '
             << QCryptographicHash::hash(readFile(item), QCryptographicHash::Sha1).toHex().toStdString();
    } else if (S_ISLNK(info.st_mode)) {
        text << "link " << std::filesystem::read_symlink(item).native();
    } else {
        text << (S_ISDIR(info.st_mode) ? "folder" : "other");
    }
    if (!S_ISLNK(info.st_mode)) {
        text << " mode " << std::oct << (info.st_mode & 07777) << std::dec;
    }
#ifdef __APPLE__
    const timespec time = info.st_mtimespec;
    const timespec change = info.st_ctimespec;
#else
    const timespec time = info.st_mtim;
    const timespec change = info.st_ctim;
#endif
    if (options.times) {
        text << " time " << time.tv_sec << '.' << time.tv_nsec;
    }
    if (options.changes) {
        text << " changed " << change.tv_sec << '.' << change.tv_nsec;
    }
    if (options.blocks && S_ISREG(info.st_mode)) {
        text << " blocks " << info.st_blocks;
    }
    text << extendedAttributes(item);
    return text.str();
}

void add(std::map<std::string, std::string> &result, const Path &root, const std::string &relative,
         SnapshotOptions options) {
    const Path item = relative == "." ? root : root / relative;
    struct stat info {};
    ::lstat(item.c_str(), &info);
    result[relative] = describe(item, info, options);
    if (S_ISDIR(info.st_mode)) {
        std::vector<FolderEntry> entries;
        readFolder(openFolder(AT_FDCWD, item.c_str()).get(), entries);
        for (const FolderEntry &entry : entries) {
            add(result, root, relative == "." ? entry.name : relative + '/' + entry.name, options);
        }
    }
}

} // namespace

std::map<std::string, std::string> snapshot(const Path &folder, SnapshotOptions options) {
    std::map<std::string, std::string> result;
    add(result, folder, ".", options);
    return result;
}

QByteArray difference(const std::map<std::string, std::string> &expected,
                      const std::map<std::string, std::string> &actual) {
    std::string text;
    for (const auto &[name, line] : expected) {
        const auto found = actual.find(name);
        if (found == actual.end() || found->second != line) {
            text += name + ": " + line + " -> " + (found == actual.end() ? "missing" : found->second) + '\n';
        }
    }
    for (const auto &[name, line] : actual) {
        if (!expected.contains(name)) {
            text += name + ": nothing -> " + line + '\n';
        }
    }
    return QByteArray::fromStdString(text);
}

} // namespace stowlark
