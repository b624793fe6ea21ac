#include "support/test_folder.h"

#include "foundation/remove_item.h"

#include <QFile>
#include <QRandomGenerator>

#include <fstream>

namespace stowlark {

TestFolder::TestFolder()
    : oldTemporary_(qgetenv("TMPDIR")) {
    std::filesystem::create_directory(temporary());
    qputenv("TMPDIR", QByteArray::fromStdString(temporary().native()));
}

TestFolder::~TestFolder() {
    removeOwnFolder(path());
    oldTemporary_.isNull() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", oldTemporary_);
}

Path TestFolder::write(const Path &relative, const QByteArray &contents) const {
    Path file = path() / relative;
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << contents.toStdString();
    return file;
}

Path TestFolder::writeTool(const Path &relative, const QByteArray &script) const {
    Path file = write(relative, "#!/bin/sh\n" + script + '\n');
    std::filesystem::permissions(file, std::filesystem::perms(0755));
    return file;
}

std::vector<std::string> TestFolder::temporaryItems(std::string_view prefix) const {
    std::vector<std::string> names;
    for (const auto &entry : std::filesystem::directory_iterator(temporary())) {
        if (entry.path().filename().native().starts_with(prefix)) {
            names.push_back(entry.path().filename());
        }
    }
    return names;
}

QByteArray readFile(const Path &file) {
    std::ifstream stream(file, std::ios::binary);
    return QByteArray::fromStdString({std::istreambuf_iterator<char>(stream), {}});
}

QByteArray someText(qsizetype size, int seed) {
    QRandomGenerator random(static_cast<quint32>(seed));
    QByteArray text;
    while (text.size() < size) {
        text += QByteArray::number(random.bounded(5000)) + (random.bounded(9) == 0 ? '\n' : ' ');
    }
    text.truncate(size);
    return text;
}

} // namespace stowlark
