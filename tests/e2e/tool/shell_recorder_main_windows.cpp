// Stands in for the programs that the shell opens folders and mailto: links with, in the
// end-to-end tests: a test registers it in its Wine prefix as the handler, and it writes what it
// was given into a file of its own in the record folder, UTF-8, exactly as it came.
//   cvh_shell_recorder RECORD-FOLDER TARGET
// The target is the rest of the command line, without the quotes that the registered command puts
// around it. It is taken from the raw line: splitting a link into arguments could change it.
#include <windows.h>

#include <string>

#include "foundation/text.h"

namespace {

void skipBlanks(const wchar_t*& at) {
    while (*at == L' ' || *at == L'\t') {
        ++at;
    }
}

// The next argument, a quoted or a bare word, without its quotes; `at` moves behind it.
std::wstring nextArgument(const wchar_t*& at) {
    skipBlanks(at);
    const bool quoted = *at == L'"';
    if (quoted) {
        ++at;
    }
    const wchar_t* start = at;
    while (*at != L'\0' && (quoted ? *at != L'"' : *at != L' ' && *at != L'\t')) {
        ++at;
    }
    std::wstring argument(start, at);
    if (quoted && *at == L'"') {
        ++at;
    }
    return argument;
}

std::wstring unquoted(const std::wstring& text) {
    if (text.size() >= 2 && text.front() == L'"' && text.back() == L'"') {
        return text.substr(1, text.size() - 2);
    }
    return text;
}

// Writes the record under the first free number. It is written under a name of its own first and
// then renamed, so that a reader never sees half a record.
bool writeRecord(const std::wstring& folder, const std::string& content) {
    CreateDirectoryW(folder.c_str(), nullptr);
    for (int number = 1; number < 1000; ++number) {
        const std::wstring name = folder + L"\\" + std::to_wstring(number);
        if (GetFileAttributesW((name + L".txt").c_str()) != INVALID_FILE_ATTRIBUTES) {
            continue;
        }
        HANDLE file = CreateFileW((name + L".part").c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                  FILE_ATTRIBUTE_NORMAL, nullptr);
        if (file == INVALID_HANDLE_VALUE) {
            continue;
        }
        DWORD written = 0;
        WriteFile(file, content.data(), static_cast<DWORD>(content.size()), &written, nullptr);
        CloseHandle(file);
        return MoveFileW((name + L".part").c_str(), (name + L".txt").c_str()) != FALSE;
    }
    return false;
}

} // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
    const wchar_t* at = GetCommandLineW();
    nextArgument(at);
    const std::wstring folder = nextArgument(at);
    skipBlanks(at);
    const std::string target = utf16ToUtf8(unquoted(at));
    return writeRecord(folder, target) ? 0 : 1;
}
