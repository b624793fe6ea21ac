#define EEXIST 17
extern "C" int *__error(void);
#define errno (*__error())
