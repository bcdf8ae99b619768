#include "host/shared_library.h"

std::string libraryFileName(std::string_view base) {
    return std::string(base) + "." + "dll";
}
