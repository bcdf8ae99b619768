#include "host/host_facts.h"

#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

#include "foundation/filesys.h"
#include "foundation/text.h"
#include "host/host_files.h"
#include "host/server_master.h"

namespace {

// The conversion takes a sign, and a minus wraps around at the width of unsigned long, which
// differs between the systems; a pid is bare digits, so a sign fails as text without a number.
void refuseSign(const std::string& text) {
    const std::size_t first = text.find_first_not_of(" \t\n\v\f\r");
    if (first != std::string::npos && (text[first] == '-' || text[first] == '+')) {
        throw std::invalid_argument("invalid stoul argument");
    }
}

} // namespace

std::uint32_t readServerPid() {
    const std::vector<std::uint8_t> bytes = filesys::readFile(installPathOf(pidFileName), 0, 0);
    const std::string text(bytes.begin(), bytes.end());
    refuseSign(text);
    // Leading blanks and the line end behind the digits don't count.
    const unsigned long pid = readUnsigned(text);
    // A pid is 32 bits wide everywhere; a wider unsigned long must fail as the 32-bit one does.
    if (pid > std::numeric_limits<std::uint32_t>::max()) {
        throw std::out_of_range("stoul argument out of range");
    }
    return static_cast<std::uint32_t>(pid);
}

bool isServerRunning() {
    return serverMaster().running;
}
