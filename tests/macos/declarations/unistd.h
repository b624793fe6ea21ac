extern "C" int close(int fd);
