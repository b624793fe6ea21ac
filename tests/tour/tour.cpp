#include "tour/tour.h"

#include "foundation/byte_count.h"
#include "foundation/file_url.h"
#include "tour/compare.h"

#include <QGuiApplication>
#include <QPalette>
#include <QTextStream>

namespace stowlark {
namespace {

QString sizeText(const Path &item) {
    return byteCountText(static_cast<qint64>(totalSize(item)));
}

std::vector<Path> makeFiles(const TestFolder &folder) {
    const Path photos = "in/Holiday photos";
    for (int i = 1; i <= 40; ++i) {
        folder.write(photos / ("2026-08-" + std::to_string(i)) / "picture.raw", someText(60'000, i));
    }
    folder.write(photos / "notes & lists (ünïcödé) 😀.txt", "bread, butter\n");
    folder.write(photos / ".hidden", "hidden");
    std::filesystem::create_directories(folder.path() / photos / "empty folder");
    return {folder.path() / photos, folder.write("in/Report.txt", someText(4'000'000)),
            folder.write("in/ two  spaces.tar.gz", someText(20'000, 7))};
}

QString slug(ArchiveFormat format) {
    return rawValue(format).section(u' ', 0, 0).toLower().replace(u'.', u'-');
}

} // namespace

Tour::Tour(StowlarkApp &program, UpdateChecker &updater, Server &server, const TestFolder &folder,
           OwnDesktop *own, const Path &screenshots)
    : program_(program)
    , view_(program.view())
    , updater_(updater)
    , server_(server)
    , folder_(folder)
    , own_(own)
    , driver_(program.window(), screenshots)
    , originals_(makeFiles(folder)) {}

void Tour::run() {
    driver_.screenshot(QStringLiteral("empty"));
    collect();
    createAll();
    extractAll();
    showAnError();
    showManyFiles();
    showSizesAndColours();
    showUpdates();
}

void Tour::collect() {
    QList<QUrl> dropped;
    for (std::size_t i = 0; i + 1 < originals_.size(); ++i) {
        dropped += fileUrl(originals_[i]);
    }
    driver_.drop(QStringLiteral("Drop files & folders here"), dropped,
                 [this] { driver_.screenshot(QStringLiteral("hovering")); });
    choose(QStringLiteral("Browse Files…"), originals_.back());
    driver_.wait(QStringLiteral("all to be added"),
                 [this] { return view_.files()->urls().size() == originals_.size(); });
    driver_.screenshot(QStringLiteral("files-added"));
    std::uintmax_t size = 0;
    for (const Path &item : originals_) {
        size += totalSize(item);
    }
    say(QStringLiteral("added      %1, %2")
            .arg(view_.files()->countText(), byteCountText(static_cast<qint64>(size))));
    std::filesystem::create_directory(folder_.path() / "archives");
    choose(QStringLiteral("Change the folder to save to"), folder_.path() / "archives");
    driver_.type(QStringLiteral("Archive Name"), QStringLiteral("My holiday"));
}

void Tour::createAll() {
    for (const ArchiveFormat format : allCases<ArchiveFormat>()) {
        driver_.choose(QStringLiteral("Format"), static_cast<int>(format));
        const bool isThere = format == ArchiveFormat::dmg ? std::filesystem::exists(Tools().hdiutil)
                                                          : view_.toolWarning().isEmpty();
        if (!isThere) {
            driver_.screenshot(slug(format) + QStringLiteral("-no-tool"));
            say(QStringLiteral("no tool    %1").arg(rawValue(format)));
        } else {
            create(format);
            archives_.push_back(path(view_.mgr()->lastOutputURL()));
        }
    }
}

void Tour::create(ArchiveFormat format) {
    driver_.press(QStringLiteral("Create Archive"));
    driver_.screenshot(slug(format) + QStringLiteral("-creating"));
    waitUntilIdle();
    driver_.screenshot(slug(format) + QStringLiteral("-created"));
    if (view_.mgr()->statusIsError()) {
        throw TourFailure(view_.mgr()->statusMessage().toStdString());
    }
    const Path archive = path(view_.mgr()->lastOutputURL());
    say(QStringLiteral("created    %1, %2").arg(displayText(archive.filename().native()), sizeText(archive)));
}

void Tour::extractAll() {
    driver_.press(QStringLiteral("Extract"));
    driver_.screenshot(QStringLiteral("extract-empty"));
    std::filesystem::create_directory(folder_.path() / "extracted");
    for (const Path &archive : archives_) {
        driver_.drop(QStringLiteral("Drop an archive here"), {fileUrl(archive)});
        choose(QStringLiteral("Change the folder to extract to"), folder_.path() / "extracted");
        driver_.press(QStringLiteral("Extract Archive"));
        waitUntilIdle();
        const QString name = displayText(archive.filename().native());
        driver_.screenshot(QStringLiteral("extracted-") + name.section(u'.', 1).replace(u'.', u'-'));
        if (view_.mgr()->statusIsError()) {
            throw TourFailure(view_.mgr()->statusMessage().toStdString());
        }
        const Path result = path(view_.mgr()->lastOutputURL());
        const std::string difference = differences(originals_, result);
        if (!difference.empty()) {
            throw TourFailure("what came out of " + name.toStdString() + " differs:\n" + difference);
        }
        say(QStringLiteral("extracted  %1 to %2/, %3, equal to the originals byte for byte")
                .arg(name, displayText(result.filename().native()), sizeText(result)));
    }
    if (archives_.empty()) {
        throw TourFailure("no archive could be created");
    }
}

void Tour::showAnError() {
    driver_.drop(QStringLiteral("Drop an archive here"),
                 {fileUrl(folder_.write("damaged.zip", someText(2000)))});
    driver_.press(QStringLiteral("Extract Archive"));
    waitUntilIdle();
    driver_.screenshot(QStringLiteral("damaged"));
    if (!view_.mgr()->statusIsError()) {
        throw TourFailure("a damaged archive was taken for a good one");
    }
    say(QStringLiteral("refused    damaged.zip: %1")
            .arg(view_.mgr()->statusMessage().section(u'\n', 1, 1).trimmed()));
}

void Tour::showManyFiles() {
    QList<QUrl> many;
    for (int i = 1; i <= 1000; ++i) {
        many += fileUrl(folder_.write("many/Page " + std::to_string(i) + ".pdf", "pdf"));
    }
    driver_.press(QStringLiteral("Compress"));
    driver_.press(QStringLiteral("Clear All"));
    driver_.drop(QStringLiteral("Drop files & folders here"), many);
    driver_.wait(QStringLiteral("the files"), [this] { return view_.files()->count() == 1000; });
    driver_.screenshot(QStringLiteral("1000-files"));
    choose(QStringLiteral("Change the folder to save to"), folder_.path()); // at the other end of the list
    driver_.screenshot(QStringLiteral("1000-files-end"));
    driver_.press(QStringLiteral("Remove Page 1000.pdf"));
    driver_.wait(QStringLiteral("the file to be removed"), [this] { return view_.files()->count() == 999; });
    say(QStringLiteral("listed     1000 items, removed one"));
}

void Tour::showSizesAndColours() {
    driver_.resize({560, 620});
    driver_.screenshot(QStringLiteral("smallest"));
    driver_.resize({1100, 950});
    driver_.screenshot(QStringLiteral("large"));
    driver_.resize({580, 820});
    for (const bool isLight : {true, false}) {
        const QString colours = isLight ? QStringLiteral("light") : QStringLiteral("dark");
        QGuiApplication::setPalette(isLight ? QPalette(QColor(239, 239, 239)) : QPalette(QColor(40, 40, 44)));
        driver_.press(QStringLiteral("Compress"));
        driver_.choose(QStringLiteral("Format"), static_cast<int>(ArchiveFormat::rar));
        driver_.screenshot(colours + QStringLiteral("-compress"));
        driver_.press(QStringLiteral("Extract"));
        driver_.press(QStringLiteral("Extract Archive"));
        waitUntilIdle();
        driver_.screenshot(colours + QStringLiteral("-extract"));
        showMenusAndSheets();
    }
}

void Tour::showMenusAndSheets() {
    MenuCommands &commands = program_.commands();
    for (const auto &[menu, command] : {std::pair{"Help", commands.help()}, {"Stowlark", commands.about()}}) {
        give(QString::fromLatin1(menu), *command);
        driver_.screenshot(QString(command->label()).replace(u' ', u'-'));
        driver_.press(QStringLiteral("Close"));
    }
}

void Tour::showUpdates() {
    const auto check = [this] {
        driver_.wait(QStringLiteral("the check before to end"), [this] { return !updater_.isChecking(); });
        QCoro::connect(updater_.checkManually(), &updater_, [] {});
    };
    server_.reply = {http("200 OK", feed("0.0.1"))};
    check();
    dismissAlert(QStringLiteral("Stowlark is up to date"));
    server_.reply = {http("404 Not Found", "<html></html>")};
    check();
    dismissAlert(QStringLiteral("Could Not Check for Updates"));
    QString notes = QStringLiteral("Faster DMG creation. <b>Fixes</b> for RAR extraction.");
    for (const bool isLong : {false, true}) {
        AppRelease release{.version = QStringLiteral("9.1"), .releaseNotes = notes};
        if (isLong) {
            release.releaseDate = QStringLiteral("2026-03-01");
        }
        server_.reply = {http("200 OK", release.encode())};
        check();
        driver_.wait(QStringLiteral("the release"), [&] { return updater_.release().releaseNotes == notes; });
        const QString name = isLong ? QStringLiteral("-long") : QStringLiteral("-short");
        driver_.screenshot(QStringLiteral("update") + name);
        driver_.press(QStringLiteral("What's New"));
        driver_.screenshot(QStringLiteral("release-notes") + name);
        driver_.press(isLong ? QStringLiteral("Download Update") : QStringLiteral("Later"));
        notes += QStringLiteral("\n- And many smaller things, each of them told here at some length.")
                     .repeated(60);
    }
    driver_.press(QStringLiteral("Dismiss"));
    if (updater_.hasRelease() || view_.property("showReleaseNotes").toBool()) {
        throw TourFailure("the banner or the sheet stays");
    }
    say(QStringLiteral("updates    offered version 9.1, said when there is none and when the server fails"));
}

void Tour::choose(const QString &button, const Path &item) {
    if (own_ != nullptr) {
        own_->choice = fileUrl(item);
        driver_.press(button);
        driver_.wait(button, [this] { return own_->choice.isEmpty(); });
    } else {
        driver_.press(button);
        driver_.enterInDialog(item);
    }
}

void Tour::dismissAlert(const QString &title) {
    if (own_ != nullptr) {
        driver_.wait(title, [&] { return own_->alerts.contains(title); });
    } else {
        driver_.dismissAlert(title);
    }
}

void Tour::give(const QString &menu, MenuCommand &command) {
    if (own_ != nullptr) { // the menus may be the system's
        command.trigger();
    } else {
        driver_.press(menu);
        driver_.screenshot(QStringLiteral("menu-") + menu);
        driver_.press(command.label());
    }
}

void Tour::waitUntilIdle() {
    driver_.wait(QStringLiteral("the operation to end"), [this] { return !view_.mgr()->isCreating(); });
}

void Tour::say(const QString &line) const {
    QTextStream(stdout) << line << Qt::endl;
}

} // namespace stowlark
