#include "support/operations.h"
#include "support/snapshot.h"
#include "support/test_folder.h"

#include <QTest>

#include <fcntl.h>
#include <sys/stat.h>
#ifdef __linux__
#include <sys/xattr.h>
#endif

using namespace stowlark;

namespace {

using Snapshot = std::map<std::string, std::string>;

bool isIn(const std::string &name, const std::string &item) {
    return name == item || name.starts_with(item + '/');
}

/// Everything but what an operation may write: `mine`. Of the folder that holds it only the times may change.
Snapshot watched(const TestFolder &folder, const std::string &mine) {
    Snapshot all = snapshot(folder.path(), {.changes = true});
    std::erase_if(all, [&](const auto &line) { return isIn(line.first, mine) || isIn(line.first, "tmp"); });
    const auto slash = mine.rfind('/');
    std::string &holder = all[slash == std::string::npos ? "." : mine.substr(0, slash)];
    holder.resize(std::min(holder.size(), holder.find(" time ")));
    return all;
}

/// Inputs of every kind, and things outside that links among them lead to.
std::vector<Path> makeInputs(const TestFolder &folder) {
    const Path in = folder.path() / "in";
    folder.write("elsewhere/target.txt", "elsewhere");
    folder.write("elsewhere/folder/inner.txt", "inner");
    const Path file = folder.write("in/file.txt", someText(200'000));
    folder.write("in/tree/a/program", "#!/bin/sh");
    folder.write("in/tree/read-only/file", "x");
    std::filesystem::create_hard_link(file, in / "tree/second name");
    std::filesystem::create_symlink(folder.path() / "elsewhere/target.txt", in / "tree/to a file");
    std::filesystem::create_directory_symlink("../../elsewhere/folder", in / "tree/to a folder");
    std::filesystem::create_symlink("nowhere", in / "tree/broken");
    std::filesystem::create_symlink(folder.path() / "elsewhere/target.txt", in / "link to a file");
    std::filesystem::create_directory_symlink(folder.path() / "elsewhere/folder", in / "link to a folder");
    folder.write("in/o/kept", "beside the output");
#ifdef __linux__
    ::setxattr(file.c_str(), "user.note", "kept", 4, 0);
#endif
    ::chmod((in / "tree/a/program").c_str(), 0751);
    ::chmod((in / "tree/read-only/file").c_str(), 0400);
    ::chmod((in / "tree/read-only").c_str(), 0555);
    std::vector<Path> inputs;
    for (const char *name : {"file.txt", "tree", "link to a file", "link to a folder"}) {
        const std::array<timespec, 2> times{timespec{1'000'000'000, 1}, timespec{1'100'000'000, 2}};
        ::utimensat(AT_FDCWD, (in / name).c_str(), times.data(), AT_SYMLINK_NOFOLLOW);
        inputs.push_back(in / name);
    }
    return inputs;
}

} // namespace

/// Whatever an operation does and however it ends: only the output, the new folder and what is in the
/// temporary folder may differ afterwards.
class UntouchedTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void nothingElseChanges_data() {
        QTest::addColumn<ArchiveFormat>("format");
        QTest::addColumn<std::string>("name");
        QTest::addColumn<bool>("creates");
        QTest::addColumn<bool>("unpacks");
        for (const InstalledFormat &installed : installedFormats()) {
            // 7z refuses to unpack links that lead up, if it stored them.
            const bool unpacks = installed.format != ArchiveFormat::sevenZ || installed.followsLinks;
            QTest::newRow(installed.name)
                << installed.format << installed.archive << !installed.followsLinks << unpacks;
        }
    }
    void nothingElseChanges() {
        QFETCH(ArchiveFormat, format);
        QFETCH(std::string, name);
        QFETCH(bool, creates);
        QFETCH(bool, unpacks);
        const TestFolder folder;
        const std::vector<Path> inputs = makeInputs(folder);
        const std::string archive = "in/" + name;
        const auto create = [&](const std::vector<Path> &files, const std::string &output,
                                bool works = true) {
            const Snapshot before = watched(folder, output);
            stowlark::create(manager_, files, folder.path() / output, format);
            return verdict(difference(before, watched(folder, output)), works);
        };
        const auto extract = [&](const std::string &from, const std::string &to, const std::string &mine,
                                 bool works = true) {
            const Snapshot before = watched(folder, mine);
            stowlark::extract(manager_, folder.path() / from, folder.path() / to);
            return verdict(difference(before, watched(folder, mine)), works);
        };
        std::vector<Path> withMissing = inputs;
        withMissing.push_back(folder.path() / "in/missing");

        QCOMPARE(create(inputs, archive, creates), QByteArray("fine")); // next to the inputs
        QCOMPARE(create(inputs, archive, creates), QByteArray("fine")); // over the one that is there
        const std::string copy = "copy" + name.substr(1);
        std::filesystem::copy_file(folder.path() / archive, folder.path() / copy);
        QCOMPARE(extract(archive, "in", "in/o_1", unpacks),
                 QByteArray("fine")); // beside a folder of its name
        QCOMPARE(extract(archive, "new/folder", "new", unpacks), QByteArray("fine"));
        QCOMPARE(create({folder.path() / "in"}, archive, creates),
                 QByteArray("fine")); // in the input itself
        QCOMPARE(create({folder.path() / "in"}, "in", false), QByteArray("fine"));
        QCOMPARE(create({inputs[0]}, "in/file.txt", false), QByteArray("fine"));
        QCOMPARE(create(inputs, "in/file.txt/o", false), QByteArray("fine"));
        QCOMPARE(create(withMissing, archive, false), QByteArray("fine"));
        std::filesystem::create_symlink("../elsewhere/target.txt", folder.path() / archive);
        QCOMPARE(create(inputs, archive, creates), QByteArray("fine")); // in the place of a link
        QCOMPARE(extract(copy, "in/file.txt", "none", false), QByteArray("fine"));
        std::filesystem::resize_file(folder.path() / copy, 700); // damaged
        QCOMPARE(extract(copy, "", "copy", false), QByteArray("fine"));
        QCOMPARE(extract("in/file.txt", "", "file", false), QByteArray("fine"));
    }

private:
    QByteArray verdict(const QByteArray &changed, bool shouldWork) const {
        if (manager_.statusIsError() == shouldWork) {
            return "ended otherwise: " + manager_.statusMessage().toUtf8();
        }
        return changed.isEmpty() ? "fine" : "changed: " + changed;
    }

    ArchiveManager manager_;
};

QTEST_GUILESS_MAIN(UntouchedTest)
#include "untouched_test.moc"
