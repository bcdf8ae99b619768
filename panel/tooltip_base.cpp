#include "panel/tooltip_base.h"

namespace {

// The host name is a plain ASCII build setting, so each byte is one UTF-16 unit.
std::wstring widened(const char* ascii) {
    return std::wstring(ascii, ascii + std::char_traits<char>::length(ascii));
}

} // namespace

const std::wstring tooltipBase = L"https://" + widened(CORVANITE_SERVICE_DOMAIN) + L":";
