#include "foundation/message_catalogue.h"
#include "foundation/text.h"
#include "host/corvanite_host.h"
#include "host/host_facts.h"

namespace {

constexpr std::uint64_t secondsPerDay = 86400;
constexpr std::uint64_t secondsPerHour = 3600;
constexpr std::uint64_t secondsPerMinute = 60;

// At least two digits, zero-filled; a larger number keeps all of its digits.
std::string twoDigits(std::uint64_t number) {
    const std::string digits = std::to_string(number);
    return digits.size() < 2 ? "0" + digits : digits;
}

} // namespace

std::string uptimeText(std::uint64_t seconds) {
    if (seconds == 0) {
        return "-";
    }
    const std::uint64_t days = seconds / secondsPerDay;
    const std::uint64_t hours = seconds % secondsPerDay / secondsPerHour;
    const std::uint64_t minutes = seconds % secondsPerHour / secondsPerMinute;
    const std::uint64_t rest = seconds % secondsPerMinute;
    // Each number stands a blank apart from its unit; the units carry the separators.
    return twoDigits(days) + " " + panelMessages.text(panelmsg::days) + twoDigits(hours) + " " +
           panelMessages.text(panelmsg::hours) + twoDigits(minutes) + " " +
           panelMessages.text(panelmsg::minutes) + twoDigits(rest) + " " +
           panelMessages.text(panelmsg::seconds);
}

std::string addressLinkText(const std::string& port) {
    if (port == "-") {
        return "-";
    }
    return "<a>" + ServiceDomain + ":" + port + "</a>";
}

std::wstring serviceUrl(const std::string& port) {
    return L"https://" + utf8ToUtf16(ServiceDomain) + L":" + utf8ToUtf16(port);
}

std::string statusText(bool running) {
    return panelMessages.text(running ? panelmsg::running : panelmsg::stopped);
}
