#include "host/detector/current_user.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <vector>

#include "foundation/exceptions.h"

namespace detector {

namespace {

// The account's name; an account without one, as containers often run, goes by its number.
std::string accountName(uid_t uid) {
    passwd entry{};
    passwd* found = nullptr;
    std::vector<char> buffer(16384);
    if (getpwuid_r(uid, &entry, buffer.data(), buffer.size(), &found) != 0 || found == nullptr) {
        return std::to_string(uid);
    }
    return entry.pw_name;
}

} // namespace

std::string currentUserName() {
    return accountName(geteuid());
}

namespace native {

std::optional<std::string> processOwnerName(std::uint32_t processId) {
    struct stat folder {};
    if (processId == 0 || stat(("/proc/" + std::to_string(processId)).c_str(), &folder) != 0) {
        throw InternalError();
    }
    return accountName(folder.st_uid);
}

} // namespace native

} // namespace detector
