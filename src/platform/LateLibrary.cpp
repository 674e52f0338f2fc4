#include "platform/LateLibrary.h"

#include <dlfcn.h>

namespace pixelgrove {

namespace {

QString LoaderError() {
    const char* text = dlerror();
    return QString::fromLocal8Bit(text ? text : "unknown");
}

}  // namespace

LateLibrary::LateLibrary(const char* name) : library_(dlopen(name, RTLD_NOW | RTLD_LOCAL)) {
    if (!library_) problem_ = LoaderError();
}

void* LateLibrary::Address(const char* name) {
    if (!library_) return nullptr;
    void* const address = dlsym(library_, name);
    if (!address && problem_.isEmpty()) problem_ = LoaderError();
    return address;
}

}  // namespace pixelgrove
