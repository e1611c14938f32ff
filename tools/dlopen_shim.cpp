// Preloaded into the engine for runs under sanitizers: it opens modules with deep binding, which the address sanitizer
// refuses. This dlopen clears the flag.
#include <dlfcn.h>

extern "C" void *dlopen(const char *file, int mode) {
    using Open = void *(*)(const char *, int);
    static const Open next = reinterpret_cast<Open>(dlsym(RTLD_NEXT, "dlopen"));
    return next(file, mode & ~RTLD_DEEPBIND);
}
