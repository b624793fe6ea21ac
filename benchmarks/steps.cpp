#include "steps.h"

#include "failure.h"
#include "foundation/remove_item.h"

namespace stowlark {

Action bareTool(Command command) {
    return [command = std::move(command)] {
        if (!runChildQuietly(command)) {
            std::string line = command.tool.native();
            for (const std::string &argument : command.arguments) {
                line += ' ' + argument;
            }
            throw Failure(QStringLiteral("This failed: ") + displayText(line));
        }
    };
}

Action removal(const Path &folder) {
    return [folder] {
        if (!removeOwnFolder(folder)) {
            throw Failure(QStringLiteral("%1 couldn’t be removed.").arg(displayText(folder.native())));
        }
    };
}

Action fileRemoval(const Path &file) {
    return [file] { std::filesystem::remove(file); };
}

} // namespace stowlark
