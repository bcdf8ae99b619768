#pragma once

#include <optional>
#include <string>

// What a POSIX command-line tool said about a file, and the status it ended with.
struct ToolResult {
    int status = 0;
    std::string output;
};

// Runs `program arguments 'path'` with the POSIX tools of the machine, standard output and error
// taken together. Natively that is the shell; under Wine the test reaches out to the Unix side.
// Nothing when the program or a POSIX system can't be reached from here.
std::optional<ToolResult> runPosixTool(const std::string& program, const std::string& arguments,
                                       const std::string& path);

// Whether this system can reach the POSIX tools at all: always natively, under Wine only.
bool posixToolsReachable();
