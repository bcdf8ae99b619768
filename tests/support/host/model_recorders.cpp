#include "tests/support/host/model_recorders.h"

#include "foundation/message_box.h"
#include "foundation/shell_open.h"

HostModelBoxRecorder::HostModelBoxRecorder() {
    setMessageBoxSink(
        [this](const std::wstring& caption, const std::wstring& text, unsigned flags) {
            const std::lock_guard<std::mutex> guard(lock_);
            recorded_.push_back({caption, text, flags});
        });
}

HostModelBoxRecorder::~HostModelBoxRecorder() {
    setMessageBoxSink(nullptr);
}

std::vector<HostModelBox> HostModelBoxRecorder::boxes() const {
    const std::lock_guard<std::mutex> guard(lock_);
    return recorded_;
}

HostModelShellRecorder::HostModelShellRecorder(bool result) {
    setShellOpenSink([this, result](const std::wstring& target, int showCommand) {
        const std::lock_guard<std::mutex> guard(lock_);
        recorded_.push_back({target, showCommand});
        return result;
    });
}

HostModelShellRecorder::~HostModelShellRecorder() {
    setShellOpenSink(nullptr);
}

std::vector<HostModelShellOpen> HostModelShellRecorder::opens() const {
    const std::lock_guard<std::mutex> guard(lock_);
    return recorded_;
}
