#include "desktop/workspace.h"

#include "foundation/child_process.h"
#include "foundation/file_url.h"

namespace stowlark {

void reveal(const QUrl &item) {
    runChildQuietly({.tool = "/usr/bin/open", .arguments = {"-R", path(item).native()}});
}

} // namespace stowlark
