#pragma once

#include "foundation/path_name.h"

#include <QByteArray>
#include <QTemporaryDir>

namespace stowlark {

/// A private folder for one test, removed afterwards, with a temporary folder of its own inside that this
/// program and its children use meanwhile.
class TestFolder {
public:
    TestFolder();
    ~TestFolder();

    Path path() const { return folder_.path().toStdString(); }
    Path temporary() const { return path() / "tmp"; }
    /// Writes a file below the folder, with the folders above it.
    Path write(const Path &relative, const QByteArray &contents) const;
    /// An executable shell script.
    Path writeTool(const Path &relative, const QByteArray &script) const;
    /// The names in the temporary folder that begin so.
    std::vector<std::string> temporaryItems(std::string_view prefix = "") const;

private:
    QTemporaryDir folder_;
    QByteArray oldTemporary_;
};

QByteArray readFile(const Path &file);

/// Numbers and spaces in lines, compressible, always the same for the same `seed`.
QByteArray someText(qsizetype size, int seed = 1);

} // namespace stowlark
