#include "host/host_facts.h"

#include <nlohmann/json.hpp>

#include "host/addon_exports.h"
#include "host/host_facts.h"
#include "host/host_files.h"
#include "host/shared_library.h"

namespace {

constexpr const char* versionRequest = "{\"action\":\"getVersion\"}";
const std::string noVersion = "-";

// The reply is copied and handed back to the library before it is parsed.
std::string ask(const SharedLibrary& library, const char* request) {
    const auto query = reinterpret_cast<AddonProcessQuery>(library.symbol("addon_process_query"));
    const auto release = reinterpret_cast<AddonFree>(library.symbol("addon_free"));
    char* answer = query(request, ServiceDomain.c_str());
    if (answer == nullptr) {
        return noVersion;
    }
    std::string copy(answer);
    release(answer);
    // Only the member "answer" and its member "version" are looked at.
    const nlohmann::json reply = nlohmann::json::parse(copy);
    return reply.at("answer").value("version", noVersion);
}

} // namespace

std::string libraryVersion() {
    try {
        const SharedLibrary library(installationPath() + "/" + libraryFileName(libraryBaseName));
        return ask(library, versionRequest);
    } catch (...) {
        return noVersion;
    }
}
