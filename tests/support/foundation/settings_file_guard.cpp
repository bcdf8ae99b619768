#include "tests/support/foundation/settings_file_guard.h"

#include <fstream>
#include <iterator>
#include <system_error>

#include "foundation/client_properties.h"
#include "tests/support/foundation/temp_folder.h"

SettingsFileGuard::SettingsFileGuard() : path(nativePath(clientProperties().filePath)) {
    std::error_code ignored;
    existed = std::filesystem::exists(path, ignored);
    if (existed) {
        std::ifstream stream(path, std::ios::binary);
        saved.assign(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
    }
}

SettingsFileGuard::~SettingsFileGuard() {
    std::error_code ignored;
    if (existed) {
        std::ofstream(path, std::ios::binary | std::ios::trunc) << saved;
    } else {
        std::filesystem::remove(path, ignored);
    }
}
