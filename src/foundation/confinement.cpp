#include "foundation/confinement.h"

#ifdef __linux__
#include "foundation/descriptor.h"

#include <fcntl.h>
#include <linux/landlock.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>
#endif

namespace stowlark {

#ifdef __linux__

namespace {

constexpr long firstWithMoves = 2; ///< version; before it, no file can be moved or linked to another folder
constexpr long firstWithTruncate = 3;
constexpr __u64 truncateFile = 1U << 14; // not in every system's header

/// Of the interface; less than 0 where there is none.
long version() {
    return ::syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION);
}

__u64 changes() {
    return LANDLOCK_ACCESS_FS_WRITE_FILE | LANDLOCK_ACCESS_FS_REMOVE_DIR | LANDLOCK_ACCESS_FS_REMOVE_FILE |
           LANDLOCK_ACCESS_FS_MAKE_CHAR | LANDLOCK_ACCESS_FS_MAKE_DIR | LANDLOCK_ACCESS_FS_MAKE_REG |
           LANDLOCK_ACCESS_FS_MAKE_SOCK | LANDLOCK_ACCESS_FS_MAKE_FIFO | LANDLOCK_ACCESS_FS_MAKE_BLOCK |
           LANDLOCK_ACCESS_FS_MAKE_SYM | LANDLOCK_ACCESS_FS_REFER |
           (version() >= firstWithTruncate ? truncateFile : 0);
}

void allow(const Descriptor &rules, const char *item, __u64 access) {
    const Descriptor place(::open(item, O_PATH | O_CLOEXEC));
    const landlock_path_beneath_attr rule{.allowed_access = access, .parent_fd = place.get()};
    ::syscall(SYS_landlock_add_rule, rules.get(), LANDLOCK_RULE_PATH_BENEATH, &rule, 0);
}

} // namespace

bool canConfineThreads() {
    return version() >= firstWithMoves;
}

void confineThread(const std::vector<Path> &folders) {
    if (!canConfineThreads()) {
        return;
    }
    landlock_ruleset_attr handled{};
    handled.handled_access_fs = changes();
    const Descriptor rules(
        static_cast<int>(::syscall(SYS_landlock_create_ruleset, &handled, sizeof handled, 0)));
    for (const Path &folder : folders) {
        allow(rules, folder.c_str(), handled.handled_access_fs);
    }
    allow(rules, "/dev/null", handled.handled_access_fs & (LANDLOCK_ACCESS_FS_WRITE_FILE | truncateFile));
    ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    ::syscall(SYS_landlock_restrict_self, rules.get(), 0);
}

#else

bool canConfineThreads() {
    return false;
}

void confineThread(const std::vector<Path> & /*folders*/) {}

#endif

} // namespace stowlark
