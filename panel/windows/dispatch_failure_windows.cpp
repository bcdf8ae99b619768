#include "panel/windows/dispatch_failure_windows.h"

#include <windows.h>

namespace {

// Only the interface thread dispatches messages to the window.
std::exception_ptr& keptFailure() {
    static std::exception_ptr failure;
    return failure;
}

} // namespace

void keepDispatchFailure(std::exception_ptr failure) {
    if (!keptFailure()) {
        keptFailure() = failure;
    }
    PostQuitMessage(1);
}

bool hasDispatchFailure() {
    return static_cast<bool>(keptFailure());
}

void rethrowDispatchFailure() {
    std::exception_ptr failure = keptFailure();
    keptFailure() = nullptr;
    if (failure) {
        std::rethrow_exception(failure);
    }
}
