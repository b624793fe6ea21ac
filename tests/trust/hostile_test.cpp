#include "archive/archive_manager.h"
#include "foundation/confinement.h"
#include "foundation/descriptor.h"
#include "foundation/file_url.h"
#include "foundation/remove_item.h"
#include "support/snapshot.h"
#include "support/test_folder.h"
#include "trust/hostile_archives.h"

#include <QCoro/QCoroCore>
#include <QDir>
#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QTest>
#include <QTimer>

#include <csignal>
#include <cstdio>
#include <list>

#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace stowlark;

namespace {

constexpr std::chrono::seconds longest(200); ///< that one archive may take

struct Tally {
    int tried = 0;
    int refused = 0;   ///< with an error that is shown
    int contained = 0; ///< as a success
    int escaped = 0;
    int hung = 0;
    qint64 slowest = 0;                 ///< milliseconds
    std::map<std::string, int> found{}; ///< in the destination folders

    void add(const Tally &other) {
        tried += other.tried;
        refused += other.refused;
        contained += other.contained;
        escaped += other.escaped;
        hung += other.hung;
        slowest = std::max(slowest, other.slowest);
        for (const auto &[what, count] : other.found) {
            found[what] += count;
        }
    }
    void print(const std::string &title, const std::string &kind) const {
        std::printf("%-10s %-18s %6d %8d %10d %8d %5d %8.1f s ", title.c_str(), kind.c_str(), tried, refused,
                    contained, escaped, hung, static_cast<double>(slowest) / 1000);
        for (const auto &[what, count] : found) {
            std::printf(" %d %s", count, what.c_str());
        }
        std::puts("");
    }
};

/// Kills what descends from a process, each by its number.
void killChildrenOf(pid_t parent) {
    for (const QString &name : QDir(u"/proc"_s).entryList(QDir::Dirs)) {
        const pid_t child = name.toInt();
        QFile file(u"/proc/%1/stat"_s.arg(name));
        const QByteArray status = child > 0 && file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
        if (status.mid(status.lastIndexOf(')')).split(' ').value(2).toInt() == parent) {
            killChildrenOf(child);
            ::kill(child, SIGKILL);
        }
    }
}

std::map<std::string, int> whatIsIn(const Path &folder) {
    std::map<std::string, int> found;
    const auto options = std::filesystem::directory_options::skip_permission_denied;
    std::error_code error;
    for (std::filesystem::recursive_directory_iterator at(folder, options, error), end; !error && at != end;
         at.increment(error)) {
        struct stat info {};
        ::lstat(at->path().c_str(), &info);
        ++found["items"];
        if (S_ISLNK(info.st_mode)) {
            const Path target = at->path().parent_path() / std::filesystem::read_symlink(at->path(), error);
            found["links outward"] += !target.lexically_normal().native().starts_with(folder.native());
        } else {
            found["set-uid"] += (info.st_mode & (S_ISUID | S_ISGID)) != 0;
            found["devices"] += S_ISCHR(info.st_mode) || S_ISBLK(info.st_mode);
            found["pipes"] += S_ISFIFO(info.st_mode);
        }
    }
    std::erase_if(found, [](const auto &entry) { return entry.second == 0; });
    return found;
}

} // namespace

Q_DECLARE_METATYPE(const stowlark::Writer *)

/// Archives that mean harm, unpacked with the tools that are installed: nothing outside the destination
/// folder may change, and nothing may hang.
class HostileTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() {
        std::filesystem::create_directory(out());
        folder_.write("watched/sentinel/victim", "as it was");
        folder_.write("watched/sentinel/inner/file", "as it was");
        std::filesystem::create_symlink("victim", watched() / "sentinel/link");
        std::filesystem::create_directories(watched() / "cwd");
        std::filesystem::create_directories(watched() / "archives");
        std::filesystem::current_path(watched() / "cwd");
        kinds_ = hostileKinds(watched(), isLong_ ? 100'000 : 5'000);
    }

    void staysInItsFolder_data() {
        QTest::addColumn<const Writer *>("writer");
        QTest::addColumn<QByteArray>("kind");
        const bool hasSevenZip = Tools().findTool("7z") || Tools().findTool("7za");
        const std::vector<std::pair<const Writer *, bool>> writers{
            {&zipWriter, std::filesystem::exists(Tools().unzip)},
            {&tarWriter, std::filesystem::exists(Tools().tar)},
            {&sevenZipWriter, hasSevenZip},
            {&rarWriter, Tools().findTool("unrar") || Tools().findTool("rar")},
            {&diskImageWriter, std::filesystem::exists(Tools().hdiutil)},
            {&rawDiskImageWriter, std::filesystem::exists(Tools().hdiutil) && Tools().findTool("7z")}};
        for (const auto &[writer, hasTool] : writers) {
            if (!hasTool) {
                withoutTool_.emplace_back(writer->format);
                continue;
            }
            for (const Kind &kind : kinds_) {
                row(writer, kind.name);
            }
            for (const char *kind : {"overlapping", "encrypted", "cut short", "bits flipped", "bomb"}) {
                row(writer, kind);
            }
        }
    }
    void staysInItsFolder() {
        QFETCH(const Writer *, writer);
        QFETCH(QByteArray, kind);
        tally_ = &results_.emplace_back(Result{writer->format, kind.toStdString(), {}}).tally;
        writer_ = writer;
        if (kind == "overlapping" && writer == &zipWriter) {
            std::ranges::for_each(overlappingZips(), [this](const QByteArray &zip) { tryToExtract(zip); });
        } else if (kind == "encrypted") {
            tryToExtract(writer->encrypted());
        } else if (kind == "bomb") {
            tryToExtract(writer->bomb(qsizetype(isLong_ ? 1024 : 64) << 20));
        } else if (kind == "cut short") {
            cutShort();
        } else if (kind == "bits flipped") {
            flipBits();
        }
        for (const Kind &hostile : kinds_) {
            for (std::size_t i = 0; kind == hostile.name && i < hostile.archives.size(); ++i) {
                const auto packed = writer->pack(hostile.archives[i]);
                tryToExtract(packed ? std::optional(writer->seal(*packed)) : packed);
            }
        }
        if (tally_->escaped > 0 && writer == &rarWriter && !canConfineThreads()) {
            QEXPECT_FAIL("", "unrar-free makes folders outside, and this system cannot prevent it", Continue);
        }
        QCOMPARE(tally_->escaped, 0);
        QCOMPARE(tally_->hung, 0);
    }

    void cleanupTestCase() {
        std::printf("%-10s %-18s %6s %8s %10s %8s %5s %10s  %s\n", "format", "kind", "tried", "refused",
                    "contained", "escaped", "hung", "slowest", "in the destination folders");
        Tally total;
        std::map<std::string, Tally> formats;
        for (const Result &result : results_) {
            if (result.tally.tried > 0) {
                result.tally.print(result.format, result.kind);
            } else {
                std::printf("%-10s %-18s      - cannot be built\n", result.format.c_str(),
                            result.kind.c_str());
            }
            total.add(result.tally);
            formats[result.format].add(result.tally);
        }
        for (const auto &[format, tally] : formats) {
            tally.print(format, "all");
        }
        for (const std::string &format : withoutTool_) {
            std::printf("%-10s no tool\n", format.c_str());
        }
        total.print("all", isLong_ ? "long" : "short");
        std::filesystem::current_path("/");
    }

private:
    struct Result {
        std::string format;
        std::string kind;
        Tally tally;
    };

    static void row(const Writer *writer, const char *kind) {
        QTest::addRow("%s: %s", writer->format, kind) << writer << QByteArray(kind);
    }

    Path watched() const { return folder_.path() / "watched"; }
    Path out() const { return folder_.path() / "out"; }

    void cutShort() {
        const QByteArray whole = writer_->seal(*writer_->pack(ordinaryItems()));
        for (int i = 0; i < 20; ++i) {
            tryToExtract(whole.left(whole.size() * i / 20));
        }
    }

    /// One bit in each; in every other archive the checksums are right all the same.
    void flipBits() {
        const QByteArray packed = *writer_->pack(ordinaryItems());
        const QByteArray sealed = writer_->seal(packed);
        QRandomGenerator random(7);
        const int count = isLong_ || writer_ != &rawDiskImageWriter ? 200 : 40;
        for (int i = 0; i < count; ++i) {
            QByteArray bytes = i % 2 == 0 ? packed : sealed;
            qsizetype at = random.bounded(bytes.size());
            while (bytes[at] == '\0') { // there is little but zeros in a volume
                at = (at + 1) % bytes.size();
            }
            bytes[at] = static_cast<char>(bytes[at] ^ 1 << random.bounded(8));
            tryToExtract(i % 2 == 0 ? writer_->seal(bytes) : bytes);
        }
    }

    void tryToExtract(const std::optional<QByteArray> &bytes) {
        if (!bytes) {
            return;
        }
        removeOwnFolder(out());
        std::filesystem::create_directory(out());
        const auto &extensions = writer_->extensions;
        const char *extension = extensions[static_cast<std::size_t>(tally_->tried) % extensions.size()];
        const Path archive = folder_.write(std::string("watched/archives/a.") + extension, *bytes);
        const auto before = snapshot(watched());
        const qint64 took = extract(archive);
        ++tally_->tried;
        tally_->slowest = std::max(tally_->slowest, took);
        ++(manager_.statusIsError() ? tally_->refused : tally_->contained);
        QVERIFY(!manager_.isCreating());
        const QByteArray changes = difference(before, snapshot(watched())) + strayItems();
        if (!changes.isEmpty()) {
            ++tally_->escaped;
            qWarning("%s archive %d: %s", writer_->format, tally_->tried, changes.constData());
        }
        for (const auto &[what, count] : whatIsIn(out() / "a")) {
            tally_->found[what] += count;
        }
        std::filesystem::remove(archive);
    }

    /// Returns how many milliseconds it took.
    qint64 extract(const Path &archive) {
        int rings = 0;
        QTimer alarm;
        QObject::connect(&alarm, &QTimer::timeout, [&] {
            if (rings++ > 1) {
                qFatal("extracting does not end even though its tool did");
            }
            killChildrenOf(::getpid());
        });
        alarm.start(longest);
        QElapsedTimer timer;
        timer.start();
        QCoro::waitFor(manager_.extractArchive(fileUrl(archive), fileUrl(out())));
        tally_->hung += rings > 0;
        return timer.elapsed();
    }

    /// What lies where only the destination folder and empty mount points of images that could not be
    /// attached may lie, and names that a file outside got besides its own.
    QByteArray strayItems() const {
        QByteArray stray;
        for (const std::string &name : namesIn(folder_.path())) {
            stray += name == "tmp" || name == "out" || name == "watched" ? "" : name.c_str();
        }
        for (const std::string &name : namesIn(out())) {
            stray += name == "a" ? "" : name.c_str();
        }
        for (const std::string &name : folder_.temporaryItems()) {
            std::error_code error;
            const bool isEmptyMountPoint =
                name.starts_with("Crateloom-dmg-") && ::rmdir((folder_.temporary() / name).c_str()) == 0;
            stray += isEmptyMountPoint ? "" : name.c_str();
        }
        const bool isLinked = std::filesystem::hard_link_count(watched() / "sentinel/victim") > 1;
        return stray + (isLinked ? "the victim has another name" : "");
    }

    const bool isLong_ = qgetenv("STOWLARK_TRUST") == "long";
    TestFolder folder_;
    ArchiveManager manager_;
    std::vector<Kind> kinds_;
    std::list<Result> results_;
    std::vector<std::string> withoutTool_;
    const Writer *writer_ = nullptr;
    Tally *tally_ = nullptr;
};

QTEST_GUILESS_MAIN(HostileTest)
#include "hostile_test.moc"
