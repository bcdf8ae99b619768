#include "module_path.h"

#include <dlfcn.h>

// The module is found from the address of this very function.
std::filesystem::path modulePath() {
    Dl_info info = {};
    if (dladdr(reinterpret_cast<void*>(&modulePath), &info) == 0 || info.dli_fname == nullptr) {
        return {};
    }
    return std::filesystem::path(info.dli_fname);
}
