#pragma once

#include <windows.h>

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

// The shell's handlers of folders and mailto: links, replaced in the test prefix for one test by
// the recorder program (tests/e2e/tool/shell_recorder_main_windows.cpp): what the program under
// test hands to the shell ends up in files of a record folder instead of opening a window. The
// machine's handlers are put back at the end.
namespace e2e {

class ShellStandIn {
public:
    explicit ShellStandIn(std::wstring recordFolder);
    ~ShellStandIn();
    ShellStandIn(const ShellStandIn&) = delete;
    ShellStandIn& operator=(const ShellStandIn&) = delete;

    // What the shell was given so far, in order, UTF-8.
    std::vector<std::string> records() const;
    // Waits for the record of that number (counted from 0).
    std::optional<std::string> waitForRecord(std::size_t index,
                                             std::chrono::milliseconds timeout) const;

private:
    struct Handlers;
    std::wstring recordFolder_;
    std::unique_ptr<Handlers> handlers_;
};

} // namespace e2e
