#pragma once

#include <QStringList>

#include <span>

namespace stowlark {

/// What a command line, or another program, asks of the application.
struct Invocation {
    enum class Kind {
        activate,     ///< come to the front
        open,         ///< the last of the files
        extractFiles, ///< the first of the files, as the context menus of file managers do
        action,       ///< what `action` names
    };
    Kind kind = Kind::activate;
    QStringList uris = {}; ///< file URLs, percent-encoded
    QString action = {};   ///< the label of a mode in lower case: its pane is shown
};

/// Reads the arguments without the name of the program. Relative paths are taken from the current folder;
/// what is no file is reported to the standard error and left out. Ends the program for --help, --version and
/// what it does not know.
Invocation invocation(std::span<char *const> arguments);

} // namespace stowlark
