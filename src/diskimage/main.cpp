#include "diskimage/attach.h"
#include "diskimage/attached_items.h"
#include "diskimage/command_line.h"
#include "diskimage/create.h"
#include "foundation/errors.h"

#include <QTextStream>

namespace stowlark {
namespace {

void run(const CreateCommand &command) {
    createImage(command);
}

void run(const AttachCommand &command) {
    attachImage(command);
}

void run(const DetachCommand &command) {
    removeAttached(command.mountPoint);
}

void run(const HelpCommand &) {
    QTextStream(stdout) << usage;
}

} // namespace
} // namespace stowlark

/// Errors are told even where "-quiet" is given: a person who cannot look into a terminal needs the reason.
int main(int argc, char **argv) {
    try {
        const std::vector<std::string> arguments(argv + 1, argv + argc);
        std::visit([](const auto &command) { stowlark::run(command); },
                   stowlark::parseCommandLine(arguments));
        return 0;
    } catch (const std::exception &error) {
        QTextStream(stderr) << stowlark::localizedDescription(error) << Qt::endl;
        return 1;
    }
}
