#pragma once

#include "app/stowlark_app.h"
#include "support/feed_server.h"
#include "tour/driver.h"
#include "tour/own_desktop.h"

namespace stowlark {

/// The program's main job through its real window on real files: adds files and folders, creates an archive
/// in every format whose tool is there, extracts each, and compares. Prints a line for each step. Throws
/// TourFailure.
class Tour {
public:
    /// `folder` is where it works, `server` what `updater` asks, `own` the desktop that the program was
    /// given: null for the system's, whose dialogs and menus it then goes through.
    Tour(StowlarkApp &program, UpdateChecker &updater, Server &server, const TestFolder &folder,
         OwnDesktop *own, const Path &screenshots);

    void run();

private:
    void collect();
    void createAll();
    void create(ArchiveFormat format);
    void extractAll();
    void showAnError();
    void showManyFiles();
    void showSizesAndColours();
    void showMenusAndSheets();
    void showUpdates();

    /// Presses the button, and chooses the item in the dialog that it opens.
    void choose(const QString &button, const Path &item);
    void dismissAlert(const QString &title);
    void give(const QString &menu, MenuCommand &command);
    void waitUntilIdle();
    void say(const QString &line) const;

    StowlarkApp &program_;
    ContentView &view_;
    UpdateChecker &updater_;
    Server &server_;
    const TestFolder &folder_;
    OwnDesktop *own_;
    Driver driver_;
    std::vector<Path> originals_;
    std::vector<Path> archives_;
};

} // namespace stowlark
