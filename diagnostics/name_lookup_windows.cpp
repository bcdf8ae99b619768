#include "diagnostics/name_lookup.h"

#include <windows.h>
#include <winsock2.h>

#include <windns.h>

#include "foundation/exceptions.h"
#include "foundation/system_library_windows.h"
#include "foundation/text.h"

#include <string>

namespace {

// The tool by its full path in the system folder, quoted, then its arguments: by a bare name the
// program's folder and the current one would be searched first. The text is made once and never
// freed, so that a probe still running at exit never reads a destroyed one.
const char* systemToolCommand(const wchar_t* tool, const char* arguments) {
    wchar_t folder[MAX_PATH] = {};
    const UINT length = GetSystemDirectoryW(folder, MAX_PATH);
    const std::wstring path = length > 0 && length < MAX_PATH
                                  ? std::wstring(folder, length) + L"\\" + tool
                                  : std::wstring(tool);
    return (new std::string("\"" + utf16ToUtf8(path) + "\" " + arguments))->c_str();
}

} // namespace

const char* const pingCommandFormat = systemToolCommand(L"ping.exe", "%1 -n 1");
const char* const nslookupCommandFormat = systemToolCommand(L"nslookup.exe", "%1");

namespace detector {

namespace {

std::string dottedByWinsock(std::uint32_t address) {
    in_addr value{};
    value.s_addr = address;
    return inet_ntoa(value);
}

} // namespace

using QueryFunction = DNS_STATUS(WINAPI*)(PCSTR, WORD, DWORD, PVOID, PDNS_RECORD*, PVOID*);

std::vector<std::string> resolveHost(const std::string& name) {
    static const auto query = systemFunctionAs<QueryFunction>(L"dnsapi.dll", "DnsQuery_A");
    if (query == nullptr) {
        throw InternalError();
    }
    PDNS_RECORD first = nullptr;
    if (query(name.c_str(), DNS_TYPE_A, DNS_QUERY_BYPASS_CACHE, nullptr, &first, nullptr) != 0) {
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
