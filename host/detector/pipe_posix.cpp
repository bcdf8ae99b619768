#include "host/detector/pipe.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include "foundation/exceptions.h"

namespace detector {

void createPipe(PipeEnd& readEnd, PipeEnd& writeEnd) {
    // Closed on exec: only the child that gets an end as its standard handle holds it, so the
    // reader sees the end of the output when that child ends.
    int ends[2] = {-1, -1};
    if (pipe2(ends, O_CLOEXEC) != 0) {
        throw InternalError();
    }
    readEnd = PipeEnd(ends[0]);
    writeEnd = PipeEnd(ends[1]);
}

namespace native {

void closePipeHandle(std::intptr_t handle) {
    ::close(static_cast<int>(handle));
}

std::optional<std::size_t> readPipe(const PipeEnd& end, char* buffer, std::size_t size) {
    for (;;) {
        const ssize_t count = ::read(static_cast<int>(end.handle()), buffer, size);
        if (count > 0) {
            return static_cast<std::size_t>(count);
        }
        // The end of the output is a failed read, as on a pipe whose writers are gone on Windows.
        if (count == 0 || errno != EINTR) {
            return std::nullopt;
        }
    }
}

} // namespace native

} // namespace detector
