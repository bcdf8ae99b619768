#include "host/host_facts.h"

#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

#include "foundation/filesys.h"
#include "foundation/text.h"
#include "host/host_files.h"
#include "host/server_master.h"

std::uint32_t readServerPid() {
    const std::vector<std::uint8_t> bytes = filesys::readFile(installPathOf(pidFileName), 0, 0);
    // Leading blanks and the line end behind the digits don't count.
    const unsigned long pid = readUnsigned(std::string(bytes.begin(), bytes.end()));
    // A pid is 32 bits wide everywhere; a wider unsigned long must fail as the 32-bit one does.
    if (pid > std::numeric_limits<std::uint32_t>::max()) {
        throw std::out_of_range("stoul argument out of range");
    }
    return static_cast<std::uint32_t>(pid);
}

bool isServerRunning() {
    return serverMaster().running;
}
