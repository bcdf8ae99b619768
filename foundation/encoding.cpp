#include "foundation/cp1251_table.h"
#include "foundation/text.h"

#include <unordered_map>

namespace {

using Unit = std::uint16_t;

// The reverse of the code page table, built once, so that both directions agree exactly.
const std::unordered_map<Unit, char>& cp1251ByUnit() {
    static const std::unordered_map<Unit, char> map = [] {
        std::unordered_map<Unit, char> result;
        for (std::size_t i = 0; i < cp1251HighUnits.size(); ++i) {
            result.emplace(cp1251HighUnits[i], static_cast<char>(0x80 + i));
        }
        return result;
    }();
    return map;
}

void appendUtf8(std::string& out, Unit unit) {
    if (unit < 0x80) {
        out += static_cast<char>(unit);
    } else if (unit < 0x800) {
        out += static_cast<char>(0xC0 | (unit >> 6));
        out += static_cast<char>(0x80 | (unit & 0x3F));
    } else {
        out += static_cast<char>(0xE0 | (unit >> 12));
        out += static_cast<char>(0x80 | ((unit >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (unit & 0x3F));
    }
}

Unit low6(std::string_view text, std::size_t index) {
    return static_cast<Unit>(static_cast<unsigned char>(text[index]) & 0x3F);
}

} // namespace

std::wstring fromCp1251(std::string_view cp1251) {
    std::wstring result;
    result.reserve(cp1251.size());
    for (const char c : cp1251) {
        const auto byte = static_cast<unsigned char>(c);
        result += static_cast<wchar_t>(byte < 0x80 ? byte : cp1251HighUnits[byte - 0x80]);
    }
    return result;
}

std::string toCp1251(std::wstring_view utf16) {
    const auto& byUnit = cp1251ByUnit();
    std::string result;
    result.reserve(utf16.size());
    for (const wchar_t c : utf16) {
        const auto unit = static_cast<Unit>(c);
        if (const auto found = byUnit.find(unit); found != byUnit.end()) {
            result += found->second;
        } else {
            result += unit < 0x80 ? static_cast<char>(unit) : '?';
        }
    }
    return result;
}

// Each unit is encoded by itself, surrogates included: the decoder below reads no four-byte
// sequences either, so a path survives the round trip unchanged.
std::string utf16ToUtf8(std::wstring_view utf16) {
    std::string result;
    result.reserve(utf16.size() * 3);
    for (const wchar_t c : utf16) {
        appendUtf8(result, static_cast<Unit>(c));
    }
    return result;
}

// The decoder checks nothing: a truncated sequence yields what it has gathered, and a byte that
// starts no sequence repeats the unit before it.
std::wstring utf8ToUtf16(std::string_view utf8) {
    std::wstring result;
    result.reserve(utf8.size());
    Unit value = 0;
    const std::size_t size = utf8.size();
    for (std::size_t i = 0; i < size; ++i) {
        const auto byte = static_cast<unsigned char>(utf8[i]);
        if (byte < 0x80) {
            value = byte;
        } else if ((byte & 0xE0) == 0xC0) {
            value = static_cast<Unit>((byte & 0x1F) << 6);
            if (i + 1 < size) {
                value |= low6(utf8, ++i);
            }
        } else if ((byte & 0xF0) == 0xE0) {
            value = static_cast<Unit>(byte << 12);
            if (i + 1 < size) {
                value |= static_cast<Unit>(low6(utf8, ++i) << 6);
                if (i + 1 < size) {
                    value |= low6(utf8, ++i);
                }
            }
        }
        result += static_cast<wchar_t>(value);
    }
    return result;
}

std::string cp1251ToUtf8(std::string_view cp1251) {
    return utf16ToUtf8(fromCp1251(cp1251));
}

std::string utf8ToCp1251(std::string_view utf8) {
    return toCp1251(utf8ToUtf16(utf8));
}
