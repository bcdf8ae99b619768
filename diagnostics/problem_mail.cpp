#include "diagnostics/problem_mail.h"

#include "diagnostics/info_report.h"
#include "foundation/message_box.h"
#include "foundation/message_catalogue.h"
#include "foundation/registry.h"
#include "foundation/text.h"
#include "host/corvanite_host.h"
#include "host/host_facts.h"

const std::map<std::string, std::string> unsupportedMailClients = {
    {"BlueMail", "AppXy7hdrppc9sgq36030xawbfw42ayy05gt"},
    {"Spike", "Spike"},
};

const std::string SupportMailAddress = CORVANITE_SUPPORT_MAIL_ADDRESS;

namespace {

const char* const mailChoiceKey =
    "Software\\Microsoft\\Windows\\Shell\\Associations\\UrlAssociations\\mailto\\UserChoice";

// Replaces each occurrence, searching again from the beginning after every replacement.
void replaceEach(std::string& text, const std::string& from, const std::string& to) {
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from)) {
        text.replace(at, from.size(), to);
    }
}

// The name of the first unsupported program, in the table's order, that marks the ProgId.
std::optional<std::string> unsupportedClientOf(const std::string& progId) {
    for (const auto& [name, pattern] : unsupportedMailClients) {
        if (progId.find(pattern) != std::string::npos) {
            return name;
        }
    }
    return std::nullopt;
}

void composeAndOpen(const ProblemMailSources& sources, const std::string& progId) {
    if (const std::optional<std::string> client = unsupportedClientOf(progId)) {
        showMessageBox(productName,
                       panelMessages.format(panelmsg::mailClientUnsupported, client->c_str()),
                       MessageBoxKind::information);
        return;
    }
    const std::string report = sources.reportText();
    const std::string subject = sources.subject();
    const std::string addresses = joinText(supportAddresses(), ",");
    sources.openLink(mailLink(addresses, subject, report));
}

} // namespace

std::vector<std::string> supportAddresses() {
    return {SupportMailAddress};
}

std::string reportSubject() {
    return "Corvanite " + libraryVersion();
}

std::string mailLink(const std::string& addresses, const std::string& subject,
                     const std::string& report) {
    const std::string link = substitutePlaceholders(
        "mailto:%1?subject=%2&body=%3", addresses.c_str(), subject.c_str(), report.c_str());
    std::string bytes = utf8ToCp1251(link);
    replaceEach(bytes, " ", "%20");
    replaceEach(bytes, "\n", "%0D%0A");
    return bytes;
}

void composeProblemMailWith(const ProblemMailSources& sources) {
    const std::string progId = sources.mailProgId().value_or("");
    try {
        composeAndOpen(sources, progId);
    } catch (const std::exception&) {
        showMessageBox(productName, panelMessages.text(panelmsg::mailNotLaunched),
                       MessageBoxKind::information);
    }
}

ProblemMailSources systemProblemMailSources() {
    ProblemMailSources sources;
    sources.mailProgId = [] {
        return readRegistryText(RegistryHive::CurrentUser, mailChoiceKey, "ProgId");
    };
    sources.reportText = infoReportText;
    sources.subject = reportSubject;
    sources.openLink = openMailLink;
    return sources;
}

void composeProblemMail() {
    composeProblemMailWith(systemProblemMailSources());
}

void CorvaniteHost::reportProblem() {
    // The report takes seconds: the window runs it on the reports' lane and stays alive meanwhile.
    composeProblemMail();
}
