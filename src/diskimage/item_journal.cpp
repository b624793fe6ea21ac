#include "diskimage/item_journal.h"

#include "foundation/errors.h"
#include "foundation/temporary_file.h"

#include <array>
#include <cerrno>
#include <cstddef>

#include <unistd.h>

namespace stowlark {
namespace {

using Stream = std::unique_ptr<std::FILE, int (*)(std::FILE *)>;

/// What comes before the name and the path of each item.
struct Head {
    VolumeItem::Numbers numbers;
    std::uint64_t nameUnits;
    std::uint64_t pathBytes;
};

[[noreturn]] void fail(PlatformError::Action action = PlatformError::Action::write) {
    throw PlatformError(action, "list of items", errno);
}

/// A stream of its own on an open file.
Stream reopen(const Descriptor &file, const char *mode) {
    Stream stream(std::fopen(("/proc/self/fd/" + std::to_string(file.get())).c_str(), mode), &std::fclose);
    if (!stream) {
        fail();
    }
    return stream;
}

void write(std::FILE *file, const void *bytes, std::size_t count) {
    if (std::fwrite(bytes, 1, count, file) != count) {
        fail();
    }
}

void read(std::FILE *file, void *bytes, std::size_t count) {
    errno = EIO; // where it ends too early, nothing sets it
    if (std::fread(bytes, 1, count, file) != count) {
        fail(PlatformError::Action::read);
    }
}

} // namespace

ItemJournal::ItemJournal()
    : file_(unlinkedTemporaryFile())
    , writer_(reopen(file_, "r+e")) {}

void ItemJournal::append(const VolumeItem &item) {
    const Head head{item.numbers, item.name.size(), item.path.size()};
    write(writer_.get(), &head, sizeof head);
    write(writer_.get(), item.name.data(), head.nameUnits * sizeof(char16_t));
    write(writer_.get(), item.path.data(), head.pathBytes);
    end_ += sizeof head + head.nameUnits * sizeof(char16_t) + head.pathBytes;
}

void ItemJournal::setCounts(std::uint64_t offset, std::uint32_t children, std::uint32_t folders) {
    const std::array<std::uint32_t, 2> counts{children, folders};
    static_assert(offsetof(VolumeItem::Numbers, folders) == offsetof(VolumeItem::Numbers, children) + 4);
    const auto at = static_cast<off_t>(offset + offsetof(VolumeItem::Numbers, children));
    if (std::fflush(writer_.get()) != 0 ||
        ::pwrite(file_.get(), counts.data(), sizeof counts, at) != sizeof counts) {
        fail();
    }
}

ItemJournal::Cursor::Cursor(const ItemJournal &journal)
    : journal_(journal)
    , file_(reopen(journal.file_, "re")) {}

bool ItemJournal::Cursor::next(VolumeItem &item) {
    if (nextOffset_ == journal_.end_) {
        return false;
    }
    if (std::fflush(journal_.writer_.get()) != 0) {
        fail();
    }
    Head head{};
    read(file_.get(), &head, sizeof head);
    item.numbers = head.numbers;
    item.name.resize(head.nameUnits);
    item.path.resize(head.pathBytes);
    read(file_.get(), item.name.data(), head.nameUnits * sizeof(char16_t));
    read(file_.get(), item.path.data(), head.pathBytes);
    offset_ = nextOffset_;
    nextOffset_ += sizeof head + head.nameUnits * sizeof(char16_t) + head.pathBytes;
    return true;
}

} // namespace stowlark
