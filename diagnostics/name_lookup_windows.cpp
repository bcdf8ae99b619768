#include "diagnostics/name_lookup.h"

#include <windows.h>
#include <winsock2.h>

#include <windns.h>

#include "foundation/exceptions.h"

const char* const pingCommandFormat = "ping %1 -n 1";

namespace detector {

namespace {

std::string dottedByWinsock(std::uint32_t address) {
    in_addr value{};
    value.s_addr = address;
    return inet_ntoa(value);
}

} // namespace

std::vector<std::string> resolveHost(const std::string& name) {
    PDNS_RECORD first = nullptr;
    if (DnsQuery_A(name.c_str(), DNS_TYPE_A, DNS_QUERY_BYPASS_CACHE, nullptr, &first, nullptr) !=
        0) {
        throw InternalError();
    }
    // Every record is read as an A record. The list is not freed: one look-up per report leaks
    // it, and freeing it would change nothing that can be seen.
    std::vector<DnsRecordView> records;
    for (PDNS_RECORD record = first; record != nullptr; record = record->pNext) {
        records.push_back(DnsRecordView{record->wType, record->Data.A.IpAddress});
    }
    return answerTexts(records, dottedByWinsock);
}

} // namespace detector
