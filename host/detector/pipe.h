#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

namespace detector {

// One end of an anonymous pipe, closed when its holder goes. The system's handle crosses this
// header only as an opaque number.
class PipeEnd {
public:
    static constexpr std::intptr_t none = -1;

    PipeEnd() = default;
    explicit PipeEnd(std::intptr_t handle) : handle_(handle) {}
    ~PipeEnd();
    PipeEnd(PipeEnd&& other) noexcept;
    PipeEnd& operator=(PipeEnd&& other) noexcept;
    PipeEnd(const PipeEnd&) = delete;
    PipeEnd& operator=(const PipeEnd&) = delete;

    std::intptr_t handle() const { return handle_; }
    bool isOpen() const { return handle_ != none; }
    void close();

private:
    std::intptr_t handle_ = none;
};

// A pipe whose ends a child process may inherit, open to everybody, with the system's default
// buffer. Raises detector::InternalError.
void createPipe(PipeEnd& readEnd, PipeEnd& writeEnd);

namespace native {

void closePipeHandle(std::intptr_t handle);

// Reads at most size bytes. The count read, which may be 0 where the system allows it; no value
// when the read failed, which includes a pipe whose writers are all gone.
std::optional<std::size_t> readPipe(const PipeEnd& end, char* buffer, std::size_t size);

} // namespace native

} // namespace detector
