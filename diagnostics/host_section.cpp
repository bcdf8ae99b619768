#include "diagnostics/host_section.h"

#include "diagnostics/diagnostic_logs.h"
#include "diagnostics/os_info.h"
#include "diagnostics/report_words.h"
#include "foundation/messages/panel_messages.h"
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
        reportWords(facts.status.running ? panelmsg::running : panelmsg::stopped);
    std::string text = labelled(panelmsg::hostVersionLabel, facts.hostVersion);
    text += labelled(panelmsg::libraryVersionLabel, facts.libraryVersion);
    text += labelled(panelmsg::portLabel, facts.status.port);
    text += labelled(panelmsg::addressLabel, facts.status.address);
    text += labelled(panelmsg::serverStatusLabel, statusWord);
    text += lineBreak;
    text += reportWords(panelmsg::installPathLine) + facts.installPath + lineBreak;
    text += lineBreak;
    text += reportWords(panelmsg::userLine) + facts.userName;
    if (facts.isAdmin) {
        text += reportWords(panelmsg::adminMark);
    }
    return text;
}

std::string hostSection() {
    return hostSectionText(gatherHostFacts(systemHostSources()));
}
