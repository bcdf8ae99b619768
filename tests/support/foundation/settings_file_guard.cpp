#include "tests/support/foundation/settings_file_guard.h"

#include <fstream>
#include <iterator>
#include <system_error>

#include "foundation/client_properties.h"
#include "tests/support/foundation/temp_folder.h"

SettingsFileGuard::SettingsFileGuard() : path_(nativePath(clientProperties().filePath)) {
    std::error_code ignored;
    existed_ = std::filesystem::exists(path_, ignored);
    if (existed_) {
        std::ifstream stream(path_, std::ios::binary);
        saved_.assign(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
    }
}

SettingsFileGuard::~SettingsFileGuard() {
    std::error_code ignored;
    if (existed_) {
        std::ofstream(path_, std::ios::binary | std::ios::trunc) << saved_;
    } else {
        std::filesystem::remove(path_, ignored);
    }
}
