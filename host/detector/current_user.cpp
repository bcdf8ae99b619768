#include "host/detector/current_user.h"

namespace detector {

bool isCurrentUserProcess(std::uint32_t processId) {
    const std::optional<std::string> owner = native::processOwnerName(processId);
    if (!owner) {
        return false;
    }
    // Asked once; a failure leaves the name to be asked again at the next call.
    static const std::string userName = currentUserName();
    return *owner == userName;
}

} // namespace detector
