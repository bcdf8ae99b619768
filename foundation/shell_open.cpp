#include "foundation/shell_open.h"

#include <algorithm>
#include <mutex>

#include "foundation/text.h"

namespace {

std::mutex sinkLock;
ShellOpenSink& sink() {
    static ShellOpenSink current;
    return current;
}

ShellOpenSink currentSink() {
    const std::lock_guard<std::mutex> guard(sinkLock);
    return sink();
}

} // namespace

void setShellOpenSink(ShellOpenSink replacement) {
    const std::lock_guard<std::mutex> guard(sinkLock);
    sink() = std::move(replacement);
}

std::wstring shellPathOf(const std::string& path) {
    std::wstring wide = utf8ToUtf16(path);
    std::replace(wide.begin(), wide.end(), L'/', L'\\');
    return wide;
}

bool shellOpenPath(const std::string& path) {
    const std::wstring target = shellPathOf(path);
    if (const ShellOpenSink current = currentSink()) {
        return current(target, 1);
    }
    return systemShellOpenPath(target);
}

void shellOpenUrl(const std::wstring& url) {
    if (const ShellOpenSink current = currentSink()) {
        current(url, 5);
        return;
    }
    systemShellOpenUrl(url);
}
