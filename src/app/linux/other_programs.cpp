#include "app/other_programs.h"

#include "desktop/linux/application_bus.h"

namespace stowlark {
namespace {

bool ask(const Invocation &invocation) {
    switch (invocation.kind) {
    case Invocation::Kind::activate:
        return ApplicationBus::askToActivate();
    case Invocation::Kind::open:
        return ApplicationBus::askToOpen(invocation.uris);
    case Invocation::Kind::extractFiles:
        return ApplicationBus::askToExtractFiles(invocation.uris);
    case Invocation::Kind::action:
        return ApplicationBus::askForAction(invocation.action);
    }
    return false;
}

} // namespace

struct OtherPrograms::Link {
    ApplicationBus bus;
};

OtherPrograms::OtherPrograms()
    : link_(std::make_unique<Link>()) {}

OtherPrograms::~OtherPrograms() = default;

bool OtherPrograms::handOver(const Invocation &invocation) {
    constexpr int attempts = 5; // the one that has the name may be about to quit
    for (int attempt = 0; attempt < attempts; ++attempt) {
        if (link_->bus.takeName()) {
            return false;
        }
        if (ask(invocation)) {
            return true;
        }
    }
    return false;
}

void OtherPrograms::serve(StowlarkApp &program) {
    using Kind = Invocation::Kind;
    ApplicationBus *bus = &link_->bus;
    QObject::connect(bus, &ApplicationBus::activateAsked, [&program] { program.take({}); });
    QObject::connect(bus, &ApplicationBus::openAsked, [&program](const QStringList &uris) {
        program.take({Kind::open, uris});
    });
    QObject::connect(bus, &ApplicationBus::extractFilesAsked, [&program](const QStringList &uris) {
        program.take({Kind::extractFiles, uris});
    });
    QObject::connect(bus, &ApplicationBus::actionAsked, [&program](const QString &action) {
        program.take({.kind = Kind::action, .action = action});
    });
}

} // namespace stowlark
