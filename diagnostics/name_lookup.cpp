#include "diagnostics/name_lookup.h"

#include "diagnostics/report_words.h"
#include "foundation/messages/panel_messages.h"
#include "foundation/text.h"
#include "host/host_facts.h"

namespace detector {

std::vector<std::string> answerTexts(const std::vector<DnsRecordView>& records,
                                     const std::function<std::string(std::uint32_t)>& dotted) {
    std::vector<std::string> texts;
    for (const DnsRecordView& record : records) {
        texts.push_back(dotted(record.firstDataWord));
    }
    return texts;
}

} // namespace detector

std::string domainSectionText(const std::string& domain,
                              const std::function<std::vector<std::string>()>& resolve) {
    std::vector<std::string> addresses;
    try {
        addresses = resolve();
    } catch (...) {
        return formatReportWords(panelmsg::domainUnavailable, domain.c_str());
    }
    const std::string lines = joinText(addresses, "\n    ");
    return formatReportWords(panelmsg::domainAvailable, domain.c_str(), lines.c_str());
}

std::string domainSection() {
    return domainSectionText(ServiceDomain, [] { return detector::resolveHost(ServiceDomain); });
}
