#include "tests/e2e/shell_stand_in_windows.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "tests/e2e/installation_windows.h"
#include "tests/e2e/ui_driver_windows.h"

namespace e2e {

namespace {

// The keys of the verb "open" that the shell follows for a folder and for a mailto: link. Wine's
// class root doesn't show the user's own classes, so the machine's are replaced for the test.
const std::wstring folderOpen = L"Software\\Classes\\Folder\\shell\\open";
const std::wstring mailtoOpen = L"Software\\Classes\\mailto\\shell\\open";
// Where the machine's keys wait meanwhile. A backup that a broken run left behind is put back
// before anything else.
const std::wstring backupRoot = L"Software\\Corvanite Tests\\Shell handlers";

HKEY createKey(HKEY root, const std::wstring& path) {
    HKEY key = nullptr;
    if (RegCreateKeyExW(root, path.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key,
                        nullptr) != ERROR_SUCCESS) {
        throw std::runtime_error("the shell stand-in's key can't be made");
    }
    return key;
}

bool keyExists(HKEY root, const std::wstring& path) {
    HKEY key = nullptr;
    if (RegOpenKeyExW(root, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) {
        return false;
    }
    RegCloseKey(key);
    return true;
}

// Copies the tree of one key into another, which is made when needed.
void copyTree(HKEY fromRoot, const std::wstring& from, HKEY toRoot, const std::wstring& to) {
    HKEY source = nullptr;
    if (RegOpenKeyExW(fromRoot, from.c_str(), 0, KEY_READ, &source) != ERROR_SUCCESS) {
        return;
    }
    HKEY target = createKey(toRoot, to);
    RegCopyTreeW(source, nullptr, target);
    RegCloseKey(target);
    RegCloseKey(source);
}

void setText(const std::wstring& path, const std::wstring& value) {
    HKEY key = createKey(HKEY_LOCAL_MACHINE, path);
    RegSetValueExW(key, nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()),
                   static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
    RegCloseKey(key);
}

// The machine's key of a verb, moved aside while the test runs and put back afterwards.
class ReplacedVerb {
public:
    ReplacedVerb(std::wstring path, const std::wstring& backupName)
        : path_(std::move(path)), backup_(backupRoot + L"\\" + backupName) {
        if (keyExists(HKEY_CURRENT_USER, backup_)) {
            restore();
        }
        copyTree(HKEY_LOCAL_MACHINE, path_, HKEY_CURRENT_USER, backup_);
        RegDeleteTreeW(HKEY_LOCAL_MACHINE, path_.c_str());
    }
    ~ReplacedVerb() { restore(); }
    ReplacedVerb(const ReplacedVerb&) = delete;
    ReplacedVerb& operator=(const ReplacedVerb&) = delete;

private:
    void restore() {
        RegDeleteTreeW(HKEY_LOCAL_MACHINE, path_.c_str());
        if (keyExists(HKEY_CURRENT_USER, backup_)) {
            copyTree(HKEY_CURRENT_USER, backup_, HKEY_LOCAL_MACHINE, path_);
            RegDeleteTreeW(HKEY_CURRENT_USER, backup_.c_str());
        }
    }

    std::wstring path_;
    std::wstring backup_;
};

} // namespace

struct ShellStandIn::Handlers {
    ReplacedVerb folder{folderOpen, L"Folder"};
    ReplacedVerb mailto{mailtoOpen, L"mailto"};
};

ShellStandIn::ShellStandIn(std::wstring recordFolder)
    : recordFolder_(std::move(recordFolder)), handlers_(std::make_unique<Handlers>()) {
    // Only a command: without "ddeexec" the shell starts the program with the target and doesn't
    // wait for a DDE server that would never answer.
    const std::wstring command =
        L"\"" + windowsPathOf(CVH_SHELL_RECORDER) + L"\" \"" + recordFolder_ + L"\" \"%1\"";
    setText(folderOpen + L"\\command", command);
    setText(mailtoOpen + L"\\command", command);
}

ShellStandIn::~ShellStandIn() = default;

std::vector<std::string> ShellStandIn::records() const {
    std::vector<std::string> found;
    for (int number = 1;; ++number) {
        const std::filesystem::path file =
            std::filesystem::path(recordFolder_) / (std::to_wstring(number) + L".txt");
        std::ifstream stream(file, std::ios::binary);
        if (!stream) {
            return found;
        }
        found.emplace_back(std::istreambuf_iterator<char>(stream),
                           std::istreambuf_iterator<char>());
    }
}

std::optional<std::string> ShellStandIn::waitForRecord(std::size_t index,
                                                       std::chrono::milliseconds timeout) const {
    std::vector<std::string> found;
    if (!ui::waitUntil([&] { return (found = records()).size() > index; }, timeout)) {
        return std::nullopt;
    }
    return found[index];
}

} // namespace e2e
