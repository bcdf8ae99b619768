#include "diagnostics/host_section.h"

#include "diagnostics/diagnostic_logs.h"
#include "diagnostics/os_info.h"
#include "diagnostics/report_words.h"
#include "host/detector/current_user.h"
#include "host/host_facts.h"

namespace {

std::string labelled(const char* id, const std::string& value) {
    return reportWords(id) + " " + value + lineBreak;
}

} // namespace

HostFacts gatherHostFacts(const HostSources& sources) {
    HostFacts facts;
    facts.isAdmin = sources.isAdmin();
    facts.status = sources.status();
    facts.userName = sources.userName();
    facts.installPath = sources.installPath();
    facts.libraryVersion = sources.libraryVersion();
    facts.hostVersion = sources.hostVersion();
    return facts;
}

HostSources systemHostSources() {
    HostSources sources;
    sources.isAdmin = [] { return detector::queryOsInfo().isAdmin; };
    sources.status = [] { return getHost()->serverStatus(); };
    sources.userName = detector::currentUserName;
    sources.installPath = installationPath;
    sources.libraryVersion = libraryVersion;
    sources.hostVersion = [] { return versionTail(fileVersionText()); };
    return sources;
}

std::string hostSectionText(const HostFacts& facts) {
    const std::string statusWord =
        reportWords(facts.status.running ? "CVCP-000009" : "CVCP-000010");
    std::string text = labelled("CVCP-005001", facts.hostVersion);
    text += labelled("CVCP-005002", facts.libraryVersion);
    text += labelled("CVCP-005004", facts.status.port);
    text += labelled("CVCP-005005", facts.status.address);
    text += labelled("CVCP-005006", statusWord);
    text += lineBreak;
    text += reportWords("CVCP-008001") + facts.installPath + lineBreak;
    text += lineBreak;
    text += reportWords("CVCP-008002") + facts.userName;
    if (facts.isAdmin) {
        text += reportWords("CVCP-008003");
    }
    return text;
}

std::string hostSection() {
    return hostSectionText(gatherHostFacts(systemHostSources()));
}
