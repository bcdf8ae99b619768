#include "panel/text_resolution.h"

#include "foundation/message_catalogue.h"
#include "foundation/text.h"
#include "host/corvanite_host.h"
#include "host/host_facts.h"

namespace {

// The words of a key that names a fact of the host; these widgets don't follow a change of
// language, and the update cycle keeps the server's state current in its own widgets.
std::string hostText(const std::string& value) {
    if (value == "time") {
        return getHost()->serverStatus().time;
    }
    if (value == "address") {
        return addressLinkText(getHost()->serverStatus().port);
    }
    if (value == "status") {
        return statusText(getHost()->serverStatus().running);
    }
    if (value == "app_version") {
        return versionTail(fileVersionText());
    }
    if (value == "lib_version") {
        return libraryVersion();
    }
    return utf8ToCp1251(value);
}

} // namespace

ResolvedText resolveText(const std::string& value) {
    if (value.find("CVCP-") != std::string::npos) {
        return {value, panelMessages.text(value.c_str())};
    }
    return {std::string(), hostText(value)};
}
