#pragma once

#include <string>
#include <string_view>

// One loaded library, unloaded again when the holder goes. Not copied.
class SharedLibrary {
public:
    // Any exported function, to be cast to its real type by the caller.
    using Function = void (*)();

    // Loads the library at `path` (UTF-8). Raises LoadLibraryError when it can't be loaded, and
    // std::runtime_error "CV-0002" when the system can't tell where the loaded module lies.
    explicit SharedLibrary(const std::string& path);
    ~SharedLibrary();
    SharedLibrary(const SharedLibrary&) = delete;
    SharedLibrary& operator=(const SharedLibrary&) = delete;

    // The address of an export; raises std::runtime_error "CV-0003" when there is none.
    Function symbol(const char* name) const;

    // The full path of the loaded module as the system reports it.
    const std::wstring& modulePath() const { return path_; }

private:
    // The native module handle, opaque here.
    void* handle_ = nullptr;
    std::wstring path_;
};

// The file name of a library on the product's platform: `base`, ".", "dll". The addon library keeps
// this name wherever the program runs.
inline std::string libraryFileName(std::string_view base) {
    return std::string(base) + "." + "dll";
}
