#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace detector {

// The logged-on user's account name, UTF-8. Raises detector::InternalError.
std::string currentUserName();

// True when the process's owner has the current user's account name, compared case-sensitively
// without the domain. A process of another user that can't be asked is not this user's. Raises
// detector::InternalError when the owner can't be told for another reason. The current user's
// name is asked once per run.
bool isCurrentUserProcess(std::uint32_t processId);

namespace native {

// The account name of the process's owner, UTF-8; no value when the system denies access to a
// process of another user. Raises detector::InternalError for every other failure.
std::optional<std::string> processOwnerName(std::uint32_t processId);

} // namespace native

} // namespace detector
