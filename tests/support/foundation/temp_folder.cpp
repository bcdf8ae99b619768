#include "tests/support/foundation/temp_folder.h"

#include <atomic>
#include <chrono>
#include <string_view>

namespace {

std::string utf8Of(const std::filesystem::path& path) {
    const std::u8string text = path.generic_u8string();
    return std::string(text.begin(), text.end());
}

std::filesystem::path uniqueFolder() {
    static std::atomic<unsigned> counter{0};
    const auto stamp = std::chrono::steady_clock::now().time_since_epoch().count();
    const std::string name =
        "corvanite-test-" + std::to_string(stamp) + "-" + std::to_string(counter.fetch_add(1));
    return std::filesystem::temp_directory_path() / name;
}

} // namespace

std::filesystem::path nativePath(const std::string& utf8) {
    return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

TempFolder::TempFolder() : native_(uniqueFolder()) {
    std::filesystem::create_directories(native_);
    path_ = utf8Of(native_);
}

TempFolder::~TempFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(native_, ignored);
}
