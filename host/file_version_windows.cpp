#include "host/file_version.h"

#include <windows.h>

#include <vector>

#include "foundation/system_library_windows.h"
#include "foundation/text.h"

namespace {

// The root block of a version resource holds the fixed file information.
constexpr DWORD fixedInfoSignature = 0xFEEF04BD;

using SizeFunction = DWORD(WINAPI*)(LPCWSTR, LPDWORD);
using InfoFunction = BOOL(WINAPI*)(LPCWSTR, DWORD, DWORD, LPVOID);
using QueryFunction = BOOL(WINAPI*)(LPCVOID, LPCWSTR, LPVOID*, PUINT);

struct VersionFunctions {
    SizeFunction size = systemFunctionAs<SizeFunction>(L"version.dll", "GetFileVersionInfoSizeW");
    InfoFunction info = systemFunctionAs<InfoFunction>(L"version.dll", "GetFileVersionInfoW");
    QueryFunction query = systemFunctionAs<QueryFunction>(L"version.dll", "VerQueryValueW");
};

const VersionFunctions& versionFunctions() {
    static const VersionFunctions functions;
    return functions;
}

} // namespace

std::optional<FileVersion> readFileVersion(const std::string& path) {
    const VersionFunctions& version = versionFunctions();
    if (version.size == nullptr || version.info == nullptr || version.query == nullptr) {
        return std::nullopt;
    }
    const std::wstring widePath = utf8ToUtf16(path);
    DWORD handle = 0;
    const DWORD size = version.size(widePath.c_str(), &handle);
    if (size == 0) {
        return std::nullopt;
    }
    std::vector<BYTE> buffer(size, 0);
    if (!version.info(widePath.c_str(), handle, size, buffer.data())) {
        return std::nullopt;
    }
    VS_FIXEDFILEINFO* info = nullptr;
    UINT length = 0;
    if (!version.query(buffer.data(), L"\\", reinterpret_cast<void**>(&info), &length) ||
        length == 0 || info == nullptr || info->dwSignature != fixedInfoSignature) {
        return std::nullopt;
    }
    return FileVersion{HIWORD(info->dwFileVersionMS), LOWORD(info->dwFileVersionMS),
                       HIWORD(info->dwFileVersionLS), LOWORD(info->dwFileVersionLS)};
}

std::optional<FileStamp> fileVersionStamp(const std::string& path) {
    return fileStamp(path);
}

std::optional<FileStamp> fileStamp(const std::string& path) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!GetFileAttributesExW(utf8ToUtf16(path).c_str(), GetFileExInfoStandard, &data)) {
        return std::nullopt;
    }
    const auto join = [](DWORD high, DWORD low) {
        return (static_cast<std::uint64_t>(high) << 32) | low;
    };
    return FileStamp{join(data.nFileSizeHigh, data.nFileSizeLow),
                     static_cast<std::int64_t>(join(data.ftLastWriteTime.dwHighDateTime,
                                                    data.ftLastWriteTime.dwLowDateTime))};
}
