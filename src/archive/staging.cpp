#include "archive/staging.h"

#include "foundation/copy_item.h"
#include "foundation/errors.h"
#include "foundation/file_url.h"

#include <QUuid>

#include <cerrno>
#include <unordered_map>

#include <sys/stat.h>

namespace stowlark {
namespace {

#ifdef __APPLE__ // whose temporary folder is the user's own; the root of an image takes the mode over
constexpr mode_t folderMode = 0777;
#else
constexpr mode_t folderMode = 0700;
#endif

bool isTaken(const Path &path) {
    struct stat info {};
    return ::lstat(path.c_str(), &info) == 0;
}

} // namespace

Path createTemporaryFolder(std::string_view prefix) {
    const QString id = QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
    Path folder = temporaryDirectory() / (std::string(prefix) + id.toStdString());
    std::error_code ignored; // if these cannot be made, neither can the folder
    std::filesystem::create_directories(folder.parent_path(), ignored);
    if (::mkdir(folder.c_str(), folderMode) != 0) {
        throw PlatformError(PlatformError::Action::createFolder, folder, errno);
    }
    return folder;
}

std::string numberedName(const std::string &name, int n) {
    if (n == 0) {
        return name;
    }
    const std::string extension = pathExtension(name);
    return deletingPathExtension(name) + '_' + std::to_string(n) + (extension.empty() ? "" : '.' + extension);
}

Path stageFiles(const std::vector<Path> &files) {
    Path stageDir = createTemporaryFolder("Crateloom-");
    std::unordered_map<std::string, int> firstNumber; // of the names seen: all below it are taken
    for (const Path &file : files) {
        const std::string name = lastPathComponent(file);
        int &n = firstNumber[name];
        while (isTaken(stageDir / numberedName(name, n))) {
            ++n;
        }
        copyItem(file, stageDir / numberedName(name, n));
    }
    return stageDir;
}

} // namespace stowlark
