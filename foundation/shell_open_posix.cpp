#include "foundation/shell_open.h"

#include <cstdio>
#include <sys/stat.h>

#include "foundation/text.h"

// Without a shell of its own the portable build names what it would open on standard error and
// accepts what exists, as the shell would.
bool systemShellOpenPath(const std::wstring& path) {
    std::string native = utf16ToUtf8(path);
    for (char& c : native) {
        if (c == '\\') {
            c = '/';
        }
    }
    std::fprintf(stderr, "[open] %s\n", native.c_str());
    struct stat info {};
    return ::stat(native.c_str(), &info) == 0;
}

void systemShellOpenUrl(const std::wstring& url) {
    std::fprintf(stderr, "[open] %s\n", utf16ToUtf8(url).c_str());
}
