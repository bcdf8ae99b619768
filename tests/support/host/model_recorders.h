#pragma once

#include <mutex>
#include <string>
#include <vector>

// Record what the host model would show or open, instead of the screen and the shell, for as long
// as they live. Boxes may come from any thread.

struct HostModelBox {
    std::wstring caption;
    std::wstring text;
    unsigned flags;
};

class HostModelBoxRecorder {
public:
    HostModelBoxRecorder();
    ~HostModelBoxRecorder();
    HostModelBoxRecorder(const HostModelBoxRecorder&) = delete;
    HostModelBoxRecorder& operator=(const HostModelBoxRecorder&) = delete;

    std::vector<HostModelBox> boxes() const;

private:
    mutable std::mutex lock_;
    std::vector<HostModelBox> recorded_;
};

struct HostModelShellOpen {
    std::wstring target;
    int showCommand;
};

class HostModelShellRecorder {
public:
    // result: what the shell answers for a path.
    explicit HostModelShellRecorder(bool result);
    ~HostModelShellRecorder();
    HostModelShellRecorder(const HostModelShellRecorder&) = delete;
    HostModelShellRecorder& operator=(const HostModelShellRecorder&) = delete;

    std::vector<HostModelShellOpen> opens() const;

private:
    mutable std::mutex lock_;
    std::vector<HostModelShellOpen> recorded_;
};
