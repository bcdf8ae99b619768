#include "tests/support/diagnostics/commands.h"

std::string printingCommand() {
    return "echo probe answer";
}

std::string silentCommand() {
    return "true";
}

std::string slowCommand() {
    return "sleep 4";
}

std::string missingCommand() {
    return "corvanite-no-such-program --version";
}
