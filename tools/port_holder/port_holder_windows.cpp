#include "tools/port_holder/port_holder.h"

#include <windows.h>
#include <winsock2.h>
#include <ws2tcpip.h>

#include <thread>

namespace portholder::native {

namespace {

// Takes connections and drops them, as a server that answers nothing useful does.
void acceptForever(SOCKET listener) {
    for (;;) {
        const SOCKET connection = accept(listener, nullptr, nullptr);
        if (connection == INVALID_SOCKET) {
            return;
        }
        closesocket(connection);
    }
}

} // namespace

bool holdPort(unsigned port, bool ipv6Only) {
    WSADATA data{};
    if (WSAStartup(MAKEWORD(2, 2), &data) != 0) {
        return false;
    }
    sockaddr_storage address{};
    int length = 0;
    if (ipv6Only) {
        auto* six = reinterpret_cast<sockaddr_in6*>(&address);
        six->sin6_family = AF_INET6;
        six->sin6_port = htons(static_cast<u_short>(port));
        six->sin6_addr = in6addr_any;
        length = sizeof(sockaddr_in6);
    } else {
        auto* four = reinterpret_cast<sockaddr_in*>(&address);
        four->sin_family = AF_INET;
        four->sin_port = htons(static_cast<u_short>(port));
        four->sin_addr.s_addr = htonl(INADDR_ANY);
        length = sizeof(sockaddr_in);
    }
    const SOCKET listener = socket(address.ss_family, SOCK_STREAM, IPPROTO_TCP);
    if (listener == INVALID_SOCKET) {
        return false;
    }
    const DWORD sixOnly = 1;
    if (ipv6Only) {
        setsockopt(listener, IPPROTO_IPV6, IPV6_V6ONLY, reinterpret_cast<const char*>(&sixOnly),
                   sizeof sixOnly);
    }
    if (bind(listener, reinterpret_cast<const sockaddr*>(&address), length) != 0 ||
        listen(listener, SOMAXCONN) != 0) {
        return false;
    }
    // Wine leaves the owner pid of a listening socket's row at 0 until an option is set on it
    // after listen(); a holder is found by that owner.
    const BOOL noDelay = TRUE;
    setsockopt(listener, IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<const char*>(&noDelay),
               sizeof noDelay);
    std::thread(acceptForever, listener).detach();
    return true;
}

void sleepSeconds(unsigned seconds) {
    Sleep(seconds * 1000);
}

} // namespace portholder::native
