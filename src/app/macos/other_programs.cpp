#include "app/other_programs.h"

#include "app/macos/system_menus.h"
#include "desktop/services.h"

namespace stowlark {

struct OtherPrograms::Link {
    SystemMenus menus;
};

OtherPrograms::OtherPrograms() = default;
OtherPrograms::~OtherPrograms() = default;

bool OtherPrograms::handOver(const Invocation & /*invocation*/) {
    return false; // the system starts no second instance
}

void OtherPrograms::serve(StowlarkApp &program) {
    link_ = std::make_unique<Link>(SystemMenus(program.commands()));
    provideServices([&program](const QStringList &urls) {
        program.take({Invocation::Kind::extractFiles, urls});
    });
}

} // namespace stowlark
