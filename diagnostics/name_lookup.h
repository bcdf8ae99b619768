#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace detector {

// One record of a DNS answer as the look-up walks it: its type and the first four bytes of its
// data, which hold the address of an A record.
struct DnsRecordView {
    std::uint16_t type = 0;
    std::uint32_t firstDataWord = 0;
};

// The address text of every record in answer order, whatever its type: a CNAME record gives a
// text made of its first four data bytes, which is not filtered out.
std::vector<std::string> answerTexts(const std::vector<DnsRecordView>& records,
                                     const std::function<std::string(std::uint32_t)>& dotted);

// The IPv4 addresses that a name resolves to, asking the name servers past any cache. Raises
// detector::InternalError when the look-up fails.
std::vector<std::string> resolveHost(const std::string& name);

} // namespace detector

// The command lines of the two network probes of the service domain, with %1 for the domain.
extern const char* const pingCommandFormat;
extern const char* const nslookupCommandFormat;

// The report's block about the service domain: the addresses, one per line behind four blanks,
// or that it is not available when the look-up throws anything at all.
std::string domainSectionText(const std::string& domain,
                              const std::function<std::vector<std::string>()>& resolve);
std::string domainSection();
