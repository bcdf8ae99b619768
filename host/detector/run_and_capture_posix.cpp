#include "host/detector/run_and_capture.h"

#include <sys/wait.h>

#include "foundation/exceptions.h"
#include "host/detector/spawn_posix.h"

namespace detector::native {

CapturedChild startCapturedChild(const std::string& commandLine, const PipeEnd& input,
                                 const PipeEnd& output) {
    const std::vector<std::string> arguments = spawning::words(commandLine);
    if (arguments.empty()) {
        throw InternalError();
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, static_cast<int>(input.handle()), 0);
    posix_spawn_file_actions_adddup2(&actions, static_cast<int>(output.handle()), 1);
    posix_spawn_file_actions_adddup2(&actions, static_cast<int>(output.handle()), 2);
    const pid_t child = spawning::start(arguments.front(), arguments, actions, false, true);
    posix_spawn_file_actions_destroy(&actions);
    if (child == -1) {
        throw InternalError();
    }
    return {child, PipeEnd::none, false};
}

bool childHasEnded(CapturedChild& child) {
    if (!child.ended) {
        int status = 0;
        const pid_t result = waitpid(static_cast<pid_t>(child.process), &status, WNOHANG);
        child.ended = result != 0;
    }
    return child.ended;
}

void releaseChild(CapturedChild& child) {
    if (!child.ended && child.process != PipeEnd::none) {
        spawning::reapLater(static_cast<pid_t>(child.process));
    }
    child.process = PipeEnd::none;
}

} // namespace detector::native
