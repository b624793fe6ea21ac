#include "diskimage/new_file.h"

#include "foundation/errors.h"

#include <QUuid>

#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <unistd.h>

namespace stowlark {
namespace {

constexpr std::size_t gatheredAtMost = 1 << 16;

Path folderOf(const Path &path) {
    const Path folder = parentFolder(path);
    return folder.empty() ? "." : folder;
}

} // namespace

NewFile::NewFile(const Path &path)
    : path_(path)
    , sibling_(folderOf(path) / (".stowlark-" + QUuid::createUuid().toString(QUuid::Id128).toStdString()))
    , file_(::open(folderOf(path).c_str(), O_WRONLY | O_TMPFILE | O_CLOEXEC, 0666)) {
    if (!file_ && (errno == EOPNOTSUPP || errno == EISDIR || errno == EINVAL)) {
        file_ = Descriptor(::open(sibling_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
        hasName_ = static_cast<bool>(file_);
    }
    if (!file_) {
        throw PlatformError(PlatformError::Action::write, path_, errno);
    }
}

NewFile::~NewFile() {
    if (hasName_) {
        ::unlink(sibling_.c_str());
    }
}

void NewFile::write(ByteSpan bytes) {
    size_ += bytes.size();
    gathered_.insert(gathered_.end(), bytes.begin(), bytes.end());
    if (gathered_.size() >= gatheredAtMost) {
        flush();
    }
}

void NewFile::flush() {
    for (ByteSpan left = gathered_; !left.empty();) {
        const ssize_t count = ::write(file_.get(), left.data(), left.size());
        if (count < 0 && errno != EINTR) {
            throw PlatformError(PlatformError::Action::write, path_, errno);
        }
        left = left.subspan(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    }
    gathered_.clear();
}

void NewFile::commit(Existing existing) {
    flush();
    if (::fsync(file_.get()) != 0) { // a file server may tell only now that its disk is full
        throw PlatformError(PlatformError::Action::write, path_, errno);
    }
    if (!hasName_) {
        const std::string self = "/proc/self/fd/" + std::to_string(file_.get());
        if (::linkat(AT_FDCWD, self.c_str(), AT_FDCWD, sibling_.c_str(), AT_SYMLINK_FOLLOW) != 0) {
            throw PlatformError(PlatformError::Action::write, path_, errno);
        }
        hasName_ = true;
    }
    const unsigned flags = existing == Existing::keep ? RENAME_NOREPLACE : 0;
    if (::renameat2(AT_FDCWD, sibling_.c_str(), AT_FDCWD, path_.c_str(), flags) != 0) {
        throw PlatformError(PlatformError::Action::write, path_, errno);
    }
    hasName_ = false;
}

} // namespace stowlark
