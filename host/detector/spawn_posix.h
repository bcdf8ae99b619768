#pragma once

#include <sys/types.h>

#include <spawn.h>

#include <string>
#include <vector>

// Starting programs on POSIX, shared by the detector's launch and capture.
namespace detector::spawning {

// The words of a command line, split on blanks as the Windows program would find its arguments.
std::vector<std::string> words(const std::string& commandLine);

// Starts program with these arguments (the first is its own name) and the file actions given;
// the child gets default signal handling and no blocked signals, and a session of its own when
// newSession is set. searchPath looks the program up as a shell would. The child's pid, or -1.
pid_t start(const std::string& program, const std::vector<std::string>& arguments,
            const posix_spawn_file_actions_t& actions, bool newSession, bool searchPath);

// Waits for the child's end on a thread of its own, so that an ended child we let go of
// doesn't stay behind as a zombie.
void reapLater(pid_t child);

} // namespace detector::spawning
