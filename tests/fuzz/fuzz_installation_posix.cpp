#include "tests/fuzz/fuzz_installation.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

fs::path makeRoot() {
    std::string pattern = (fs::temp_directory_path() / "corvanite-fuzz-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) {
        std::abort();
    }
    return pattern;
}

void removeRoot();

const fs::path& root() {
    static const fs::path folder = [] {
        const fs::path made = makeRoot();
        std::atexit(removeRoot);
        return made;
    }();
    return folder;
}

void removeRoot() {
    std::error_code ignored;
    fs::remove_all(root(), ignored);
}

void writeBytes(const fs::path& path, std::string_view bytes) {
    fs::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

} // namespace

const std::string& fuzzInstallation() {
    static const std::string path = [] {
        const fs::path installation = root() / "CorvaniteHost";
        fs::create_directories(installation / "conf");
        fs::create_directories(installation / "logs");
        setenv("CORVANITE_REGISTRY", (root() / "registry").c_str(), 1);
        setenv("XDG_DATA_HOME", (root() / "data").c_str(), 1);
        setenv("HOME", (root() / "home").c_str(), 1);
        writeBytes(root() / "registry/HKEY_CURRENT_USER/Software/Ormal Co/CorvaniteHost/Path",
                   installation.string());
        return installation.string();
    }();
    return path;
}

void writeInstallationFile(std::string_view name, std::string_view bytes) {
    writeBytes(fs::path(fuzzInstallation()) / name, bytes);
}

std::string readInstallationFile(std::string_view name) {
    std::ifstream file(fs::path(fuzzInstallation()) / name, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}
