#include "host/detector/pipe.h"

#include <windows.h>

#include "foundation/exceptions.h"

namespace detector {

void createPipe(PipeEnd& readEnd, PipeEnd& writeEnd) {
    SECURITY_DESCRIPTOR descriptor{};
    if (!InitializeSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION) ||
        !SetSecurityDescriptorDacl(&descriptor, TRUE, nullptr, FALSE)) {
        throw InternalError();
    }
    SECURITY_ATTRIBUTES attributes{};
    attributes.nLength = sizeof attributes;
    attributes.lpSecurityDescriptor = &descriptor;
    attributes.bInheritHandle = TRUE;
    HANDLE readHandle = nullptr;
    HANDLE writeHandle = nullptr;
    if (!CreatePipe(&readHandle, &writeHandle, &attributes, 0)) {
        throw InternalError();
    }
    readEnd = PipeEnd(reinterpret_cast<std::intptr_t>(readHandle));
    writeEnd = PipeEnd(reinterpret_cast<std::intptr_t>(writeHandle));
}

namespace native {

void closePipeHandle(std::intptr_t handle) {
    CloseHandle(reinterpret_cast<HANDLE>(handle));
}

std::optional<std::size_t> readPipe(const PipeEnd& end, char* buffer, std::size_t size) {
    DWORD count = 0;
    if (!ReadFile(reinterpret_cast<HANDLE>(end.handle()), buffer, static_cast<DWORD>(size), &count,
                  nullptr)) {
        return std::nullopt;
    }
    return count;
}

} // namespace native

} // namespace detector
