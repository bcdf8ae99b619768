#include "tests/support/diagnostics/zip_tool_command.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include <sys/wait.h>

namespace {

std::string quoted(const std::string& text) {
    std::string result = "'";
    for (const char c : text) {
        result += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return result + "'";
}

std::string readAll(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

} // namespace

std::optional<ToolResult> runPosixTool(const std::string& program, const std::string& arguments,
                                       const std::string& path) {
    if (std::system(("command -v " + program + " >/dev/null 2>&1").c_str()) != 0) {
        return std::nullopt;
    }
    const std::string outputPath = path + ".out";
    const std::string line =
        program + " " + arguments + " " + quoted(path) + " >" + quoted(outputPath) + " 2>&1";
    const int status = std::system(line.c_str());
    ToolResult result;
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    result.output = readAll(outputPath);
    std::remove(outputPath.c_str());
    return result;
}

bool posixToolsReachable() {
    return true;
}
