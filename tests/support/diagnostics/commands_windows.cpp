#include "tests/support/diagnostics/commands.h"

std::string printingCommand() {
    return "cmd /c echo probe answer";
}

std::string silentCommand() {
    return "cmd /c exit 0";
}

std::string slowCommand() {
    return "ping 127.0.0.1 -n 5";
}

std::string missingCommand() {
    return "corvanite-no-such-program.exe --version";
}
