#pragma once

#include "app/stowlark_app.h"
#include "support/feed_server.h"
#include "tour/driver.h"

namespace stowlark {

/// The program's main job through its real window on real files: adds files and folders, creates an archive
/// in every format whose tool is there, extracts each, and compares. Prints a line for each step. Throws
/// TourFailure.
class Tour {
public:
    /// `folder` is where it works, `server` what `updater` asks.
    Tour(StowlarkApp &program, UpdateChecker &updater, Server &server, const TestFolder &folder,
         const Path &screenshots);

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

    void waitUntilIdle();
    void say(const QString &line) const;

    ContentView &view_;
    UpdateChecker &updater_;
    Server &server_;
    const TestFolder &folder_;
    Driver driver_;
    std::vector<Path> originals_;
    std::vector<Path> archives_;
};

} // namespace stowlark
