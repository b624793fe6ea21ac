// Stands in for an archive tool. What it does is told by its first argument, or by FAKE_TOOL where the
// program under test chooses the arguments.

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>

#include <fcntl.h>
#include <unistd.h>

extern char **environ; // not declared on macOS

namespace {

void writeBytes(int fd, char byte, long long count) {
    const std::string block(1 << 16, byte);
    while (count > 0) {
        const ssize_t written = ::write(fd, block.data(), std::min<long long>(count, 1 << 16));
        if (written <= 0) {
            std::exit(99);
        }
        count -= written;
    }
}

/// The working directory, the arguments and the environment, each ended by a NUL and each list by an empty
/// line.
int record(const char *file, char **arguments) {
    std::ofstream out(file, std::ios::binary);
    for (char **argument = arguments; !out && *argument != nullptr;
         ++argument) { // may it write elsewhere alone?
        if (const char *folder = std::strchr(*argument, '/'); folder != nullptr) {
            out.open(std::string(folder) + "/record", std::ios::binary);
        }
    }
    char folder[8192] = "";
    out << (::getcwd(folder, sizeof folder) != nullptr ? folder : "none") << '\0';
    for (char **list : {arguments, environ}) {
        for (; *list != nullptr; ++list) {
            out << *list << '\0';
        }
        out << '\n' << '\0';
    }
    return 0;
}

} // namespace

int main(int argc, char **argv) {
    const char *told = std::getenv("FAKE_TOOL"); // NOLINT(concurrency-mt-unsafe)
    if (told != nullptr) {
        return record(told, argv);
    }
    const std::string task = argc > 1 ? argv[1] : "";
    if (task == "record") {
        return record(argv[2], argv);
    }
    if (task == "print") { // COUNT bytes, then exit with STATUS
        writeBytes(STDOUT_FILENO, 'x', std::atoll(argv[2]));
        return std::atoi(argv[3]);
    }
    if (task == "interleave") { // COUNT numbered lines, even ones to standard error, then exit with 1
        for (int i = 0; i < std::atoi(argv[2]); ++i) {
            ::dprintf(i % 2 == 0 ? STDERR_FILENO : STDOUT_FILENO, "line %d\n", i);
        }
        return 1;
    }
    if (task ==
        "descriptors") { // exit with 0 if only the standard three are open, on the null device and a file
        for (int fd = 3; fd < 256; ++fd) {
            if (::fcntl(fd, F_GETFD) != -1) {
                ::dprintf(STDOUT_FILENO, "descriptor %d is open", fd);
                return 1;
            }
        }
        char byte = 0;
        return ::read(STDIN_FILENO, &byte, 1) == 0 ? 0 : 2;
    }
    if (task == "die") {
        ::dprintf(STDOUT_FILENO, "last words");
        std::raise(SIGKILL);
    }
    return 64;
}
