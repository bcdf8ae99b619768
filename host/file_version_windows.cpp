#include "host/file_version.h"

#include <windows.h>

#include <vector>

#include "foundation/text.h"

namespace {

// The root block of a version resource holds the fixed file information.
constexpr DWORD fixedInfoSignature = 0xFEEF04BD;

} // namespace

std::optional<FileVersion> readFileVersion(const std::string& path) {
    const std::wstring widePath = utf8ToUtf16(path);
    DWORD handle = 0;
    const DWORD size = GetFileVersionInfoSizeW(widePath.c_str(), &handle);
    if (size == 0) {
        return std::nullopt;
    }
    std::vector<BYTE> buffer(size, 0);
    if (!GetFileVersionInfoW(widePath.c_str(), handle, size, buffer.data())) {
        return std::nullopt;
    }
    VS_FIXEDFILEINFO* info = nullptr;
    UINT length = 0;
    if (!VerQueryValueW(buffer.data(), L"\\", reinterpret_cast<void**>(&info), &length) ||
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
