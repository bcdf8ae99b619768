#include <windows.h>

#include "bench/process_floor.h"

void askCreationTime(std::uint32_t pid) {
    const HANDLE process = OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, pid);
    if (process == nullptr) {
        return;
    }
    FILETIME creation{};
    FILETIME exit{};
    FILETIME kernel{};
    FILETIME user{};
    GetProcessTimes(process, &creation, &exit, &kernel, &user);
    CloseHandle(process);
}
