#pragma once

#include "foundation/path_name.h"

#include <QByteArray>

#include <map>
#include <string>
#include <vector>

namespace stowlark {

struct SnapshotOptions {
    bool times = true;    ///< modification times to the nanosecond, of folders too
    bool blocks = false;  ///< space used on the disk
    bool changes = false; ///< times of the last change of anything, also of a mode or another time
};

/// All that a folder holds, by path relative to it ("." is itself): kind, contents, targets of links, and
/// extended attributes, each as one line of text.
std::map<std::string, std::string> snapshot(const Path &folder, SnapshotOptions options = {});

/// The lines in which two snapshots differ; empty if they are equal.
QByteArray difference(const std::map<std::string, std::string> &expected,
                      const std::map<std::string, std::string> &actual);

} // namespace stowlark
