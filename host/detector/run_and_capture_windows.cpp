#include "host/detector/run_and_capture.h"

#include <windows.h>

#include <vector>

#include "foundation/exceptions.h"
#include "foundation/text.h"

namespace detector::native {

namespace {

HANDLE handleOf(std::intptr_t value) {
    return reinterpret_cast<HANDLE>(value);
}

} // namespace

CapturedChild startCapturedChild(const std::string& commandLine, const PipeEnd& input,
                                 const PipeEnd& output) {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = handleOf(input.handle());
    startup.hStdOutput = handleOf(output.handle());
    startup.hStdError = handleOf(output.handle());
    // The system may write into the command line, so it gets a copy of its own.
    const std::wstring line = utf8ToUtf16(commandLine);
    std::vector<wchar_t> writable(line.begin(), line.end());
    writable.push_back(L'\0');
    PROCESS_INFORMATION information{};
    if (!CreateProcessW(nullptr, writable.data(), nullptr, nullptr, TRUE, CREATE_NO_WINDOW, nullptr,
                        nullptr, &startup, &information)) {
        throw InternalError();
    }
    return {reinterpret_cast<std::intptr_t>(information.hProcess),
            reinterpret_cast<std::intptr_t>(information.hThread), false};
}

bool childHasEnded(CapturedChild& child) {
    DWORD code = 0;
    child.ended = GetExitCodeProcess(handleOf(child.process), &code) && code != STILL_ACTIVE;
    return child.ended;
}

void releaseChild(CapturedChild& child) {
    CloseHandle(handleOf(child.process));
    CloseHandle(handleOf(child.thread));
    child.process = PipeEnd::none;
    child.thread = PipeEnd::none;
}

} // namespace detector::native
