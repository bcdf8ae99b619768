#include "host/shared_library.h"

#include <windows.h>

#include <stdexcept>

#include "foundation/exceptions.h"
#include "foundation/message_catalogue.h"
#include "foundation/text.h"

namespace {

HMODULE moduleOf(void* handle) {
    return static_cast<HMODULE>(handle);
}

} // namespace

namespace {

// A bare name is one of Windows' own libraries: it is looked for in the system folder only, never
// beside the program. A path is loaded as it stands.
HMODULE load(const std::string& path) {
    const bool bareName = path.find_first_of("/\\") == std::string::npos;
    return LoadLibraryExW(utf8ToUtf16(path).c_str(), nullptr,
                          bareName ? LOAD_LIBRARY_SEARCH_SYSTEM32 : 0);
}

} // namespace

SharedLibrary::SharedLibrary(const std::string& path) {
    handle_ = load(path);
    if (handle_ == nullptr) {
        throw LoadLibraryError(path);
    }
    wchar_t buffer[MAX_PATH] = {};
    if (GetModuleFileNameW(moduleOf(handle_), buffer, sizeof(buffer) / sizeof(buffer[0])) != 0) {
        path_ = buffer;
    }
    if (path_.empty()) {
        FreeLibrary(moduleOf(handle_));
        throw std::runtime_error(commonMessages.format(commonmsg::filePathNotFound, path.c_str()));
    }
}

SharedLibrary::~SharedLibrary() {
    FreeLibrary(moduleOf(handle_));
}

SharedLibrary::Function SharedLibrary::symbol(const char* name) const {
    const FARPROC address = GetProcAddress(moduleOf(handle_), name);
    if (address == nullptr) {
        throw std::runtime_error(commonMessages.format(commonmsg::functionNotLoaded, name));
    }
    return reinterpret_cast<Function>(address);
}
