// A stand-in for the product's addon library "Corvanite.dll": the two exports with the C calling
// convention, answering the version request. Side files beside the library steer the answer
// (addon_double_protocol.h).

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>

#include "addon_double_protocol.h"
#include "module_path.h"

namespace {

std::filesystem::path sideFile(const char* suffix) {
    std::filesystem::path path = modulePath();
    path += suffix;
    return path;
}

std::optional<std::string> readSideFile(const char* suffix) {
    std::ifstream stream(sideFile(suffix), std::ios::binary);
    if (!stream) {
        return std::nullopt;
    }
    return std::string(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
}

// Only a log file that a test has made is written to.
void log(const std::string& line) {
    const std::filesystem::path path = sideFile(addonLogSuffix);
    std::error_code ignored;
    if (!std::filesystem::exists(path, ignored)) {
        return;
    }
    std::ofstream(path, std::ios::binary | std::ios::app) << line << '\n';
}

std::string trimmed(std::string text) {
    const auto end = text.find_last_not_of(" \t\r\n");
    text.erase(end == std::string::npos ? 0 : end + 1);
    return text;
}

std::string versionReply() {
    const std::string version =
        trimmed(readSideFile(addonVersionSuffix).value_or(addonDoubleVersion));
    return "{\"answer\":{\"version\":\"" + version + "\"}}";
}

std::optional<std::string> reply(const std::string& request) {
    if (readSideFile(addonNullSuffix)) {
        return std::nullopt;
    }
    if (auto verbatim = readSideFile(addonReplySuffix)) {
        return verbatim;
    }
    if (request == "{\"action\":\"getVersion\"}") {
        return versionReply();
    }
    return std::string("{\"error\":\"unknown request\"}");
}

char* copyOut(const std::string& text) {
    char* copy = static_cast<char*>(std::malloc(text.size() + 1));
    if (copy != nullptr) {
        std::memcpy(copy, text.c_str(), text.size() + 1);
    }
    return copy;
}

} // namespace

extern "C" ADDON_EXPORT char* ADDON_CALL addon_process_query(const char* request,
                                                             const char* domain) {
    const std::string requestText = request != nullptr ? request : "";
    log("query " + requestText + " " + (domain != nullptr ? domain : ""));
    const std::optional<std::string> answer = reply(requestText);
    return answer ? copyOut(*answer) : nullptr;
}

extern "C" ADDON_EXPORT void ADDON_CALL addon_free(char* answer) {
    log("free");
    std::free(answer);
}
