#include "host/detector/pipe.h"

#include <utility>

namespace detector {

PipeEnd::~PipeEnd() {
    close();
}

PipeEnd::PipeEnd(PipeEnd&& other) noexcept : handle_(std::exchange(other.handle_, none)) {}

PipeEnd& PipeEnd::operator=(PipeEnd&& other) noexcept {
    if (this != &other) {
        close();
        handle_ = std::exchange(other.handle_, none);
    }
    return *this;
}

void PipeEnd::close() {
    if (handle_ != none) {
        native::closePipeHandle(std::exchange(handle_, none));
    }
}

} // namespace detector
