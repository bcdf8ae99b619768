#include "tools/host_double/host_double.h"

#include <windows.h>
#include <winsock2.h>
#include <ws2tcpip.h>

#include <thread>

namespace hostdouble::native {

namespace {

HANDLE quitEvent = nullptr;

std::wstring quitEventName(std::uint32_t pid) {
    return L"ngx_quit_" + std::to_wstring(pid);
}

DWORD timeout(unsigned milliseconds) {
    return milliseconds == 0 ? INFINITE : milliseconds;
}

void acceptForever(SOCKET listener) {
    for (;;) {
        const SOCKET connection = accept(listener, nullptr, nullptr);
        if (connection == INVALID_SOCKET) {
            return;
        }
        closesocket(connection);
    }
}

// The socket address of a listener: IPv4 or IPv6 by the form of its address text.
int socketAddress(const Listener& listener, sockaddr_storage& address) {
    const auto port = htons(static_cast<u_short>(listener.port));
    auto* four = reinterpret_cast<sockaddr_in*>(&address);
    if (InetPtonA(AF_INET, listener.address.c_str(), &four->sin_addr) == 1) {
        four->sin_family = AF_INET;
        four->sin_port = port;
        return sizeof(sockaddr_in);
    }
    auto* six = reinterpret_cast<sockaddr_in6*>(&address);
    if (InetPtonA(AF_INET6, listener.address.c_str(), &six->sin6_addr) == 1) {
        six->sin6_family = AF_INET6;
        six->sin6_port = port;
        return sizeof(sockaddr_in6);
    }
    return 0;
}

// A listening socket, or INVALID_SOCKET with WSAGetLastError telling why.
SOCKET listenOn(const Listener& where) {
    WSADATA data{};
    if (WSAStartup(MAKEWORD(2, 2), &data) != 0) {
        return INVALID_SOCKET;
    }
    sockaddr_storage address{};
    const int length = socketAddress(where, address);
    if (length == 0) {
        WSASetLastError(WSAEINVAL);
        return INVALID_SOCKET;
    }
    const SOCKET listener = socket(address.ss_family, SOCK_STREAM, IPPROTO_TCP);
    if (listener == INVALID_SOCKET) {
        return INVALID_SOCKET;
    }
    // nginx's "[::]" listener takes IPv6 only.
    const DWORD sixOnly = 1;
    if (address.ss_family == AF_INET6) {
        setsockopt(listener, IPPROTO_IPV6, IPV6_V6ONLY, reinterpret_cast<const char*>(&sixOnly),
                   sizeof sixOnly);
    }
    if (bind(listener, reinterpret_cast<const sockaddr*>(&address), length) != 0 ||
        listen(listener, SOMAXCONN) != 0) {
        const int error = WSAGetLastError();
        closesocket(listener);
        WSASetLastError(error);
        return INVALID_SOCKET;
    }
    // Wine leaves the owner pid of a listening socket's row at 0 until an option is set on it
    // after listen(); the panel finds the server by that owner.
    const BOOL noDelay = TRUE;
    setsockopt(listener, IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<const char*>(&noDelay),
               sizeof noDelay);
    return listener;
}

// "10048: Only one usage of each socket address …", as nginx writes a socket error.
std::string socketErrorText(int error) {
    char text[512] = {};
    const DWORD length =
        FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                       static_cast<DWORD>(error), 0, text, sizeof text, nullptr);
    std::string words(text, length);
    while (!words.empty() &&
           (words.back() == '\n' || words.back() == '\r' || words.back() == '.')) {
        words.pop_back();
    }
    return std::to_string(error) + ": " + words;
}

} // namespace

// nginx's Windows build is a program of the 8-bit calls: its prefix is GetCurrentDirectoryA's
// text, and its files open through CreateFileA below that prefix.
std::string prefix() {
    char folder[MAX_PATH] = {};
    const DWORD length = GetCurrentDirectoryA(MAX_PATH, folder);
    if (length == 0 || length >= MAX_PATH) {
        return "";
    }
    std::string text(folder, length);
    if (text.back() != '\\') {
        text += '\\';
    }
    return text;
}

bool readNarrow(const std::string& path, std::string& bytes) {
    const HANDLE file = CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                    nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return false;
    }
    bytes.clear();
    char buffer[4096];
    DWORD read = 0;
    while (ReadFile(file, buffer, sizeof buffer, &read, nullptr) && read > 0) {
        bytes.append(buffer, read);
    }
    CloseHandle(file);
    return true;
}

bool writeNarrow(const std::string& path, const std::string& bytes, bool append) {
    const HANDLE file = CreateFileA(
        path.c_str(), append ? FILE_APPEND_DATA : GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
        nullptr, append ? OPEN_ALWAYS : CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return false;
    }
    DWORD written = 0;
    const bool ok = WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written,
                              nullptr) != FALSE &&
                    written == bytes.size();
    CloseHandle(file);
    return ok;
}

bool removeNarrow(const std::string& path) {
    return DeleteFileA(path.c_str()) != FALSE;
}

std::uint32_t ownPid() {
    return GetCurrentProcessId();
}

std::filesystem::path ownExecutable() {
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    return std::filesystem::path(path);
}

const char* lineEnd() {
    return "\r\n";
}

void prepareForQuit() {
    quitEvent = CreateEventW(nullptr, TRUE, FALSE, quitEventName(ownPid()).c_str());
}

std::intptr_t startWorker(const WorkerOrders& orders) {
    const std::wstring executable = ownExecutable().wstring();
    std::wstring commandLine =
        L"\"" + executable + L"\" --worker " + std::to_wstring(orders.listener.port) + L" " +
        std::to_wstring(ownPid()) + L" " +
        std::wstring(orders.listener.address.begin(), orders.listener.address.end());
    if (orders.neverListen) {
        commandLine += L" never_listen";
    }
    if (orders.orphan) {
        commandLine += L" orphan";
    }
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION information{};
    if (!CreateProcessW(executable.c_str(), commandLine.data(), nullptr, nullptr, FALSE,
                        CREATE_NO_WINDOW, nullptr, nullptr, &startup, &information)) {
        return 0;
    }
    CloseHandle(information.hThread);
    return reinterpret_cast<std::intptr_t>(information.hProcess);
}

bool waitForQuit(bool ignoreQuit, unsigned dieAfterMilliseconds) {
    if (ignoreQuit || quitEvent == nullptr) {
        Sleep(timeout(dieAfterMilliseconds));
        return false;
    }
    return WaitForSingleObject(quitEvent, timeout(dieAfterMilliseconds)) == WAIT_OBJECT_0;
}

void stopWorker(std::intptr_t worker) {
    const auto process = reinterpret_cast<HANDLE>(worker);
    if (process != nullptr) {
        TerminateProcess(process, 0);
        WaitForSingleObject(process, 5000);
        CloseHandle(process);
    }
}

void releaseWorker(std::intptr_t worker) {
    const auto process = reinterpret_cast<HANDLE>(worker);
    if (process != nullptr) {
        CloseHandle(process);
    }
}

bool signalQuit(std::uint32_t masterPid) {
    const HANDLE event = OpenEventW(EVENT_MODIFY_STATE, FALSE, quitEventName(masterPid).c_str());
    if (event == nullptr) {
        return false;
    }
    const bool signalled = SetEvent(event) != FALSE;
    CloseHandle(event);
    return signalled;
}

int runWorker(const WorkerOrders& orders, std::uint32_t masterPid) {
    const HANDLE master = OpenProcess(SYNCHRONIZE, FALSE, masterPid);
    if (master == nullptr) {
        return 1;
    }
    if (!orders.neverListen) {
        SOCKET listener = INVALID_SOCKET;
        const bool listening =
            listenLikeNginx(orders.listener, [&]() -> std::optional<std::string> {
                listener = listenOn(orders.listener);
                if (listener != INVALID_SOCKET) {
                    return std::nullopt;
                }
                return socketErrorText(WSAGetLastError());
            });
        if (!listening) {
            return 1;
        }
        std::thread(acceptForever, listener).detach();
    }
    // An orphan keeps serving after its master is gone, until somebody ends it.
    WaitForSingleObject(orders.orphan ? GetCurrentProcess() : master, INFINITE);
    return 0;
}

bool writeStandardOutput(const std::string& bytes) {
    DWORD written = 0;
    return WriteFile(GetStdHandle(STD_OUTPUT_HANDLE), bytes.data(),
                     static_cast<DWORD>(bytes.size()), &written, nullptr) &&
           written == bytes.size();
}

} // namespace hostdouble::native
