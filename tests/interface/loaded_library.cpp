#include "loaded_library.h"

#include <dlfcn.h>

#include <stdexcept>

LoadedLibrary::LoadedLibrary() : handle(dlopen(DRAVO_LIBRARY, RTLD_NOW | RTLD_LOCAL)) {
    if (!handle) {
        throw std::runtime_error(dlerror());
    }
}

LoadedLibrary::~LoadedLibrary() {
    dlclose(handle);
}

void *LoadedLibrary::symbol(const char *name) const {
    void *address = dlsym(handle, name);
    // dlsym also searches the libraries that this one needs.
    Dl_info info;
    const bool own = address && dladdr(address, &info) && std::string(info.dli_fname) == DRAVO_LIBRARY;
    return own ? address : nullptr;
}
