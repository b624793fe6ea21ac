// Where the C headers at hand have none.
#include <sys/ioctl.h>
#include <termios.h>

extern "C" int forkpty(int *controller, char *name, struct termios *settings, struct winsize *size);
