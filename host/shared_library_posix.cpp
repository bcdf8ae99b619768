#include "host/shared_library.h"

#include <dlfcn.h>
#include <link.h>

#include <stdexcept>

#include "foundation/exceptions.h"
#include "foundation/message_catalogue.h"
#include "foundation/text.h"

// The library keeps its Windows file name here: dlopen takes any name when it is given a path.
SharedLibrary::SharedLibrary(const std::string& path) {
    handle_ = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle_ == nullptr) {
        throw LoadLibraryError(path);
    }
    link_map* module = nullptr;
    if (dlinfo(handle_, RTLD_DI_LINKMAP, &module) == 0 && module != nullptr &&
        module->l_name != nullptr) {
        path_ = utf8ToUtf16(module->l_name);
    }
    if (path_.empty()) {
        dlclose(handle_);
        throw std::runtime_error(commonMessages.format(commonmsg::filePathNotFound, path.c_str()));
    }
}

SharedLibrary::~SharedLibrary() {
    dlclose(handle_);
}

SharedLibrary::Function SharedLibrary::symbol(const char* name) const {
    void* address = dlsym(handle_, name);
    if (address == nullptr) {
        throw std::runtime_error(commonMessages.format(commonmsg::functionNotLoaded, name));
    }
    return reinterpret_cast<Function>(address);
}
