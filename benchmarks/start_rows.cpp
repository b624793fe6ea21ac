#include "start_rows.h"

#include "started_program.h"

#include <cstdio>
#include <memory>

namespace stowlark {
namespace {

bool hasDisplay() {
#ifdef Q_OS_MACOS
    return true;
#else
    return qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY");
#endif
}

using Started = std::unique_ptr<StartedProgram>;

/// From the program's start to its first frame.
Side start(const QString &program, const Path &home,
           const std::shared_ptr<Started> &started = std::make_shared<Started>()) {
    return {.run =
                [=] {
                    *started = std::make_unique<StartedProgram>(program, home);
                    (*started)->waitForFrame();
                },
            .before = [=] { std::filesystem::create_directories(home); },
            .after = [=] { started->reset(); }};
}

Side memory(const QString &program, const Path &home) {
    const auto started = std::make_shared<Started>();
    Side side = start(program, home, started);
    side.figure = [=] { return (*started)->memoryWhenIdle(); };
    return side;
}

} // namespace

void addStartRows(std::vector<Row> &rows, const Path &folder) {
    if (!hasDisplay()) {
        std::fputs("No display: the rows of the start are left out.\n", stderr);
        return;
    }
    const QString ours = QStringLiteral("stowlark");
    const QString plain = QStringLiteral("stowlark_plain_window");
    const Path home = folder / "home";
    rows.push_back({.name = "start, first frame : plain",
                    .limit = 1.5,
                    .stowlark = start(ours, home),
                    .bare = start(plain, home)});
    if (StartedProgram::canTellMemory()) {
        rows.push_back({.name = "start, memory : plain",
                        .limit = 1.3,
                        .stowlark = memory(ours, home),
                        .bare = memory(plain, home),
                        .unit = "MB"});
    }
}

} // namespace stowlark
