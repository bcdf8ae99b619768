#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "host/detector/pipe.h"

namespace detector {

// Runs a command line with its standard input and output on pipes and returns what it wrote,
// read in blocks whose last byte is always lost. No value when the child didn't end within
// seconds (it goes on running), when it wrote nothing, or when its output is an exact multiple
// of a block. Raises detector::InternalError when the child can't be started.
std::optional<std::string> runAndCapture(const std::string& commandLine, std::int64_t seconds);

// The size of one block of a child's output.
constexpr std::size_t outputBlockSize = 128;

// Reads a child's output the way runAndCapture does: blocks of outputBlockSize bytes, the last
// byte of each block read replaced by a terminating zero, each block kept up to its first zero
// byte, going on while a block came full. No value when a read fails or reads nothing.
using BlockReader = std::function<std::optional<std::size_t>(char* buffer, std::size_t size)>;
std::optional<std::string> readOutputBlocks(const BlockReader& readBlock);

namespace native {

// A child started for capture, as opaque system handles.
struct CapturedChild {
    std::intptr_t process = PipeEnd::none;
    std::intptr_t thread = PipeEnd::none;
    bool ended = false;
};

// Starts the command line without a window, its standard input on input and both its standard
// output and error on output. Raises detector::InternalError.
CapturedChild startCapturedChild(const std::string& commandLine, const PipeEnd& input,
                                 const PipeEnd& output);
bool childHasEnded(CapturedChild& child);
// Lets go of the child's handles; a child still running goes on.
void releaseChild(CapturedChild& child);

} // namespace native

} // namespace detector
