#pragma once

#include "diskimage/bytes.h"
#include "foundation/descriptor.h"
#include "foundation/path_name.h"

namespace stowlark {

/// A file that is written beside its place and gets its name when it is whole. Where the file system can, it
/// has no name until then, and nothing is left of it if the program is killed.
class NewFile {
public:
    /// Throws PlatformError, as the others do.
    explicit NewFile(const Path &path);
    /// Removes what was written unless it was committed.
    ~NewFile();
    NewFile(const NewFile &) = delete;
    NewFile &operator=(const NewFile &) = delete;

    /// Appends. Small pieces are gathered.
    void write(ByteSpan bytes);
    /// What was written so far, in bytes.
    std::uint64_t size() const { return size_; }

    enum class Existing { keep, replace };
    /// Gives the file its name. With `keep`, an item that has the name already is an error.
    void commit(Existing existing);

private:
    void flush();

    Path path_;
    Path sibling_;
    bool hasName_ = false; ///< the sibling's
    Descriptor file_;
    Bytes gathered_;
    std::uint64_t size_ = 0;
};

} // namespace stowlark
