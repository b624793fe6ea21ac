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

/// From the program's start to its first frame. `renderer` is a Qt Quick back end, empty for Qt's choice.
Side start(const QString &program, const QString &renderer, const Path &home,
           const std::shared_ptr<Started> &started = std::make_shared<Started>()) {
    return {.run =
                [=] {
                    *started = std::make_unique<StartedProgram>(program, renderer, home);
                    (*started)->waitForFrame();
                },
            .before = [=] { std::filesystem::create_directories(home); },
            .after = [=] { started->reset(); }};
}

Side memory(const QString &program, const QString &renderer, const Path &home) {
    const auto started = std::make_shared<Started>();
    Side side = start(program, renderer, home, started);
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
    for (const QString &renderer : {QString(), QStringLiteral("software")}) {
        const std::string names = (renderer.isEmpty() ? "" : ", software") + std::string(" : plain");
        rows.push_back({.name = "start, frame" + names,
                        .limit = 1.5,
                        .stowlark = start(ours, renderer, home),
                        .bare = start(plain, renderer, home)});
        if (StartedProgram::canTellMemory()) {
            rows.push_back({.name = "start, memory" + names,
                            .limit = 1.3,
                            .stowlark = memory(ours, renderer, home),
                            .bare = memory(plain, renderer, home),
                            .unit = "MB"});
        }
    }
}

} // namespace stowlark
