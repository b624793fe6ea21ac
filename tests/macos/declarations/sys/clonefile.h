#include <stdint.h>

#define CLONE_NOOWNERCOPY 0x0002
extern "C" int fclonefileat(int source, int folder, const char *target, uint32_t flags)
    __attribute__((availability(macos, introduced = 10.12)));
