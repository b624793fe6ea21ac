#define O_WRONLY 0x0001
#define O_CREAT 0x0200
#define O_EXCL 0x0800
#define O_CLOEXEC 0x01000000
extern "C" int openat(int folder, const char *path, int flags, ...);
