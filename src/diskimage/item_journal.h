#pragma once

#include "foundation/descriptor.h"

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

namespace stowlark {

/// A file, symbolic link or folder on its way into a volume.
struct VolumeItem {
    struct Numbers {
        std::uint32_t id = 0;       ///< its catalog node ID
        std::uint32_t parent = 0;   ///< that of the folder that holds it
        std::uint32_t mode = 0;     ///< st_mode
        std::uint32_t owner = 0;    ///< user ID
        std::uint32_t group = 0;    ///< group ID
        std::uint32_t children = 0; ///< of a folder: what it holds
        std::uint32_t folders = 0;  ///< of a folder: the folders among them
        std::int64_t modified = 0;  ///< seconds since 1970
        std::uint64_t size = 0;     ///< bytes; of a link, of its target's text; 0 for folders
        std::uint64_t block = 0;    ///< its first allocation block, counted from the first of all contents
    } numbers{};
    std::u16string name{}; ///< as the volume stores it
    std::string path{};    ///< relative to the source folder
};

/// Items in a temporary file, so that memory does not grow with their number.
class ItemJournal {
public:
    ItemJournal();

    void append(const VolumeItem &item);
    /// Completes the folder that begins at `offset`.
    void setCounts(std::uint64_t offset, std::uint32_t children, std::uint32_t folders);

    /// Reads the items in the order in which they were appended, also such as are appended meanwhile.
    class Cursor {
    public:
        explicit Cursor(const ItemJournal &journal);
        /// False at the end.
        bool next(VolumeItem &item);
        /// Where the item that was read last begins.
        std::uint64_t offset() const { return offset_; }

    private:
        const ItemJournal &journal_;
        std::unique_ptr<std::FILE, int (*)(std::FILE *)> file_;
        std::uint64_t offset_ = 0;
        std::uint64_t nextOffset_ = 0;
    };

private:
    Descriptor file_;
    std::unique_ptr<std::FILE, int (*)(std::FILE *)> writer_;
    std::uint64_t end_ = 0;
};

} // namespace stowlark
