// PortHolder.exe for the tests: a program that is not the server and holds the server's port.
//
//   PortHolder <port> [ipv6_only] [--for <seconds>]
//
// Listens on every IPv4 interface at the port (or, with ipv6_only, on every IPv6 interface and
// nothing else), writes "holding <port>" and a line end to its standard output, and keeps the
// port until it is ended or the time given (120 seconds unless told) has passed, so that a test
// that dies leaves no holder for long. Exits with 1 when the port can't be had.
#include "tools/port_holder/port_holder.h"

#include <cstdio>
#include <string>
#include <vector>

namespace {

unsigned readNumber(const std::string& text) {
    try {
        return static_cast<unsigned>(std::stoul(text));
    } catch (const std::exception&) {
        return 0;
    }
}

} // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> words(argv, argv + argc);
    if (words.size() < 2) {
        std::fputs("usage: PortHolder <port> [ipv6_only] [--for <seconds>]\n", stderr);
        return 2;
    }
    const unsigned port = readNumber(words[1]);
    bool ipv6Only = false;
    unsigned seconds = 120;
    for (std::size_t index = 2; index < words.size(); ++index) {
        if (words[index] == "ipv6_only") {
            ipv6Only = true;
        } else if (words[index] == "--for" && index + 1 < words.size()) {
            seconds = readNumber(words[++index]);
        }
    }
    if (port == 0 || port > 65535 || !portholder::native::holdPort(port, ipv6Only)) {
        return 1;
    }
    std::printf("holding %u\n", port);
    std::fflush(stdout);
    portholder::native::sleepSeconds(seconds);
    return 0;
}
