#include "diagnostics/name_lookup.h"

#include <arpa/inet.h>
#include <netdb.h>

#include "foundation/exceptions.h"

// Without the DNS client of Windows the resolver of the C library answers, IPv4 only; it has no
// way past its cache, and it gives addresses only, so there are no CNAME records to walk.

// ping counts its echoes with -c here; -n would only turn off name look-ups and ping forever.
const char* const pingCommandFormat = "ping -c 1 %1";
const char* const nslookupCommandFormat = "nslookup %1";

namespace detector {

namespace {

constexpr std::uint16_t addressRecord = 1;

std::string dottedByInet(std::uint32_t address) {
    in_addr value{};
    value.s_addr = address;
    char text[INET_ADDRSTRLEN] = {};
    inet_ntop(AF_INET, &value, text, sizeof(text));
    return text;
}

} // namespace

std::vector<std::string> resolveHost(const std::string& name) {
    addrinfo hints{};
    hints.ai_family = AF_INET;
    hints.ai_socktype = SOCK_STREAM;
    addrinfo* first = nullptr;
    if (getaddrinfo(name.c_str(), nullptr, &hints, &first) != 0) {
        throw InternalError();
    }
    std::vector<DnsRecordView> records;
    for (const addrinfo* entry = first; entry != nullptr; entry = entry->ai_next) {
        const auto* address = reinterpret_cast<const sockaddr_in*>(entry->ai_addr);
        records.push_back(DnsRecordView{addressRecord, address->sin_addr.s_addr});
    }
    freeaddrinfo(first);
    return answerTexts(records, dottedByInet);
}

} // namespace detector
