#include "working_folder.h"

#include "failure.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStorageInfo>

namespace stowlark {

QString roomyParent() {
    constexpr qint64 roomNeeded = 4'000'000'000;
    const QString memory = QStringLiteral("/dev/shm");
    const QStorageInfo storage(memory);
    const bool fits = storage.rootPath() == memory && storage.fileSystemType() == "tmpfs" &&
                      storage.bytesAvailable() >= roomNeeded && QFileInfo(memory).isWritable();
    return fits ? memory : QDir::tempPath();
}

WorkingFolder::WorkingFolder(const QString &parent)
    : folder_(QDir(parent).absoluteFilePath(QStringLiteral("stowlark-bench-XXXXXX"))) {
    if (!folder_.isValid()) {
        throw Failure(QStringLiteral("No folder could be made in %1: %2").arg(parent, folder_.errorString()));
    }
    const Path temporary = path() / "tmp";
    std::filesystem::create_directory(temporary);
    qputenv("TMPDIR", QByteArray::fromStdString(temporary.native()));
}

Path WorkingFolder::path() const {
    return QFile::encodeName(folder_.path()).toStdString();
}

QString WorkingFolder::fileSystemType() const {
    return QString::fromLatin1(QStorageInfo(folder_.path()).fileSystemType());
}

} // namespace stowlark
