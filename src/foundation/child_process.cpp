#include "foundation/child_process.h"

#include "foundation/confinement.h"
#include "foundation/descriptor.h"
#include "foundation/errors.h"
#include "foundation/temporary_file.h"
#include "foundation/worker.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <exception>
#include <thread>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

extern char **environ; // NOLINT(readability-redundant-declaration): not declared on macOS

namespace stowlark {
namespace {

constexpr auto nullDevice = "/dev/null";

class SpawnActions {
public:
    SpawnActions() { ::posix_spawn_file_actions_init(&actions_); }
    ~SpawnActions() { ::posix_spawn_file_actions_destroy(&actions_); }
    SpawnActions(const SpawnActions &) = delete;
    SpawnActions &operator=(const SpawnActions &) = delete;
    posix_spawn_file_actions_t *get() { return &actions_; }

private:
    posix_spawn_file_actions_t actions_{};
};

/// A session of its own, no signal blocked or ignored, and no descriptor but the standard ones.
class SpawnAttributes {
public:
    SpawnAttributes() {
        ::posix_spawnattr_init(&attributes_);
        sigset_t signals;
        sigemptyset(&signals); // a macro on macOS
        ::posix_spawnattr_setsigmask(&attributes_, &signals);
        sigfillset(&signals);
        ::posix_spawnattr_setsigdefault(&attributes_, &signals);
        int flags = POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF;
#ifdef __APPLE__
        flags |= POSIX_SPAWN_CLOEXEC_DEFAULT;
#endif
        ::posix_spawnattr_setflags(&attributes_, static_cast<short>(flags));
    }
    ~SpawnAttributes() {
        ::posix_spawnattr_destroy(&attributes_);
    }
    SpawnAttributes(const SpawnAttributes &) = delete;
    SpawnAttributes &operator=(const SpawnAttributes &) = delete;
    const posix_spawnattr_t *get() const {
        return &attributes_;
    }

private:
    posix_spawnattr_t attributes_{};
};

std::vector<char *> pointers(std::vector<std::string> &strings) {
    std::vector<char *> result;
    result.reserve(strings.size() + 1);
    for (std::string &string : strings) {
        result.push_back(string.data());
    }
    result.push_back(nullptr);
    return result;
}

/// A child may work in a folder with items of others, of which none may be taken for a tool that it looks
/// for.
std::string withoutRelativeFolders(std::string_view searchPath) {
    std::string result;
    while (!searchPath.empty()) {
        const std::string_view folder = searchPath.substr(0, searchPath.find(':'));
        searchPath.remove_prefix(std::min(folder.size() + 1, searchPath.size()));
        if (folder.starts_with('/')) {
            result.append(result.empty() ? 0 : 1, ':').append(folder);
        }
    }
    return result.empty() ? "/usr/bin:/bin" : result;
}

std::vector<std::string> environmentWith(const std::map<std::string, std::string> &additions) {
    constexpr std::string_view searchPath = "PATH=";
    std::vector<std::string> result;
    for (char **entry = environ; *entry != nullptr; ++entry) {
        const std::string_view variable = *entry;
        if (additions.contains(std::string(variable.substr(0, variable.find('='))))) {
            continue;
        }
        if (variable.starts_with(searchPath)) {
            result.push_back(std::string(searchPath) +
                             withoutRelativeFolders(variable.substr(searchPath.size())));
        } else {
            result.emplace_back(variable);
        }
    }
    for (const auto &[name, value] : additions) {
        result.emplace_back(name).append(1, '=').append(value);
    }
    return result;
}

/// Starts the child with its output going to `output`, or to the null device if that is -1.
pid_t launch(const Command &command, int output) {
    SpawnActions actions;
    if (output < 0) {
        ::posix_spawn_file_actions_addopen(actions.get(), STDOUT_FILENO, nullDevice, O_WRONLY, 0);
        output = STDOUT_FILENO;
    }
    ::posix_spawn_file_actions_adddup2(actions.get(), output, STDOUT_FILENO);
    ::posix_spawn_file_actions_adddup2(actions.get(), STDOUT_FILENO, STDERR_FILENO);
    // After the others: were a standard descriptor closed in this program, the output could be number 0.
    ::posix_spawn_file_actions_addopen(actions.get(), STDIN_FILENO, nullDevice, O_RDONLY, 0);
#ifdef __GLIBC__
    ::posix_spawn_file_actions_addclosefrom_np(actions.get(), STDERR_FILENO + 1);
#endif
    if (command.workingDirectory) {
        ::posix_spawn_file_actions_addchdir_np(actions.get(), command.workingDirectory->c_str());
    }

    std::vector<std::string> arguments{command.tool.native()};
    arguments.insert(arguments.end(), command.arguments.begin(), command.arguments.end());
    std::vector<std::string> variables = environmentWith(command.environment);

    const SpawnAttributes attributes;
    pid_t child = -1;
    const int error = ::posix_spawn(&child, command.tool.c_str(), actions.get(), attributes.get(),
                                    pointers(arguments).data(), pointers(variables).data());
    if (error != 0) {
        if (command.workingDirectory && ::access(command.workingDirectory->c_str(), X_OK) != 0) {
            throw PlatformError(PlatformError::Action::openFolder, *command.workingDirectory, errno);
        }
        throw PlatformError(PlatformError::Action::launch, command.tool, error);
    }
    return child;
}

/// The same, from a thread of its own that hands its limits down, where the child has any.
pid_t launchWithinLimits(const Command &command, int output) {
    if (command.writableFolders.empty()) {
        return launch(command, output);
    }
    pid_t child = -1;
    std::exception_ptr failure;
    std::thread([&] {
        try {
            confineThread(command.writableFolders);
            child = launch(command, output);
        } catch (...) {
            failure = std::current_exception();
        }
    }).join();
    if (failure) {
        std::rethrow_exception(failure);
    }
    return child;
}

bool waitForSuccess(pid_t child) {
    int status = 0;
    while (::waitpid(child, &status, 0) < 0) {
        if (errno != EINTR) {
            return false;
        }
    }
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace

QCoro::Task<ChildEnd> runChild(Command command) {
    const Descriptor output = unlinkedTemporaryFile(O_APPEND);
    const pid_t child = launchWithinLimits(command, output.get());
    auto wait = [child, file = output.get()] {
        ChildEnd end;
        end.succeeded = waitForSuccess(child);
        if (!end.succeeded) {
            end.output = shownContents(file);
        }
        return end;
    };
    co_return co_await onWorker(std::move(wait));
}

bool runChildInto(const Command &command, int output) {
    return waitForSuccess(launchWithinLimits(command, output));
}

bool runChildQuietly(const Command &command) noexcept {
    try {
        return runChildInto(command, -1);
    } catch (const std::exception &) {
        return false;
    }
}

} // namespace stowlark
