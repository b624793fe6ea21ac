#include "app/other_programs.h"

#include "app/macos/system_menus.h"
#include "desktop/services.h"

namespace stowlark {

struct OtherPrograms::Link {
    explicit Link(MenuCommands &commands)
        : menus(commands) {}
    SystemMenus menus;
};

OtherPrograms::OtherPrograms() = default;
OtherPrograms::~OtherPrograms() = default;

// NOLINTNEXTLINE(readability-convert-member-functions-to-static)
bool OtherPrograms::handOver(const Invocation & /*invocation*/) {
    return false; // the system starts no second instance
}

void OtherPrograms::serve(StowlarkApp &program) {
    link_ = std::make_unique<Link>(program.commands());
    provideServices([&program](const QStringList &urls) {
        program.take({Invocation::Kind::extractFiles, urls});
    });
}

} // namespace stowlark
