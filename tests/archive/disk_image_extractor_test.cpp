#include "archive/disk_image_extractor.h"
#include "support/failure.h"
#include "support/snapshot.h"
#include "support/test_folder.h"

#include <QCoro/QCoroCore>
#include <QRegularExpression>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace stowlark;

namespace {

const QByteArray items =
    "mkdir -p 'An App/inner' .background; echo 1 >'An App/inner/file'; echo 2 >.DS_Store;"
    "ln -s /Applications Applications; ln -s nowhere broken;";

/// A tool whose volumes hold what `fill` makes there, and whose detaching does what `detach` says. It notes
/// its arguments and the order in which the volume lists its items.
Path fakeTool(const TestFolder &folder, const QByteArray &fill, const QByteArray &detach) {
    const QByteArray here = QByteArray::fromStdString(folder.path().native());
    return folder.writeTool("hdiutil", "cd " + here + "; echo \"$*\" >>runs\ncase $1 in attach) cd \"$4\"; " +
                                           fill + " ls -f >" + here + "/order;; detach) cd \"$2\"; " +
                                           detach + ";; esac");
}

} // namespace

class DiskImageExtractorTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        folder_.emplace();
        std::filesystem::create_directory(folder_->path() / "out");
    }

    void copiesWhatIsVisible_data() {
        QTest::addColumn<QByteArray>("detach");
        QTest::newRow("detaches slowly") << QByteArray("sleep 0.3; rm -rf * .background .DS_Store");
        QTest::newRow("cannot detach") << QByteArray("chmod 500 'An App'; exit 1");
        QTest::newRow("removes the mount point itself") << QByteArray("rm -rf \"$2\"");
    }
    void copiesWhatIsVisible() {
        QFETCH(QByteArray, detach);
        int ticks = 0;
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, [&] { ++ticks; });
        timer.start(10);
        QCOMPARE(extract(fakeTool(*folder_, items, detach)), QString());
        QVERIFY(ticks > 10 || !detach.startsWith("sleep")); // the event loop went on meanwhile
        const auto found = snapshot(folder_->path() / "out");
        QCOMPARE(found.size(), 6U); // with the folder itself
        QCOMPARE(found.at("Applications").substr(0, 18), std::string("link /Applications"));
        QCOMPARE(found.at("broken").substr(0, 12), std::string("link nowhere"));
        QCOMPARE(readFile(folder_->path() / "out/An App/inner/file"), "1\n");
        QCOMPARE(runs(),
                 "attach */some image.dmg -mountpoint @ -nobrowse -quiet -noverify\ndetach @ -quiet\n");
        QCOMPARE(folder_->temporaryItems().size(), 0U);
    }

    void endsAtTheFirstItemThatFails() {
        const QByteArray more = "echo >a; echo >b; echo >c; mkfifo pipe; echo >d; echo >e; echo >f;";
        QCOMPARE(extract(fakeTool(*folder_, items + more, "exit 1")),
                 u"The file “pipe” couldn’t be copied because it is a named pipe."_s);
        QStringList expected;
        for (const QByteArray &name : readFile(folder_->path() / "order").split('\n')) {
            if (name == "pipe") {
                break;
            }
            if (!name.startsWith('.')) {
                expected += QString::fromUtf8(name);
            }
        }
        QStringList found;
        for (const auto &entry : std::filesystem::directory_iterator(folder_->path() / "out")) {
            found += displayText(entry.path().filename().native());
        }
        expected.sort();
        found.sort();
        QCOMPARE(found, expected);
        QVERIFY(runs().endsWith("\ndetach @ -quiet -force\n"));
        QCOMPARE(folder_->temporaryItems().size(), 0U);
    }

    void leavesTheMountPointOfWhatItCannotAttach() {
        QCOMPARE(extract(fakeTool(*folder_, "echo no image; exit 1;", "")), u"no image"_s);
        QCOMPARE(runs(), "attach */some image.dmg -mountpoint @ -nobrowse -quiet -noverify\n");
        QVERIFY(extract("/none/hdiutil").contains(u"hdiutil"));
        const auto left = folder_->temporaryItems("Crateloom-dmg-");
        QCOMPARE(left.size(), 2U);
        for (const std::string &name : left) {
            QCOMPARE(name.size(), 14U + 36U);
            QVERIFY(std::filesystem::is_empty(folder_->temporary() / name));
        }
        QVERIFY(std::filesystem::is_empty(folder_->path() / "out"));
    }

private:
    QString extract(const Path &tool) {
        return failure(
            runDMGExtract({.hdiutil = tool}, folder_->path() / "some image.dmg", folder_->path() / "out"));
    }

    /// "*" is the test's folder, "@" the mount point.
    QByteArray runs() {
        const QRegularExpression mountPoint(u"\\*/tmp/Crateloom-dmg-[0-9A-F-]{36}"_s);
        return QString::fromUtf8(readFile(folder_->path() / "runs"))
            .replace(QString::fromStdString(folder_->path().native()), u"*"_s)
            .replace(mountPoint, u"@"_s)
            .toUtf8();
    }

    std::optional<TestFolder> folder_;
};

QTEST_GUILESS_MAIN(DiskImageExtractorTest)
#include "disk_image_extractor_test.moc"
