#include "tools/port_holder/port_holder.h"

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace portholder::native {

bool holdPort(unsigned port, bool ipv6Only) {
    sockaddr_storage address{};
    socklen_t length = 0;
    if (ipv6Only) {
        auto* six = reinterpret_cast<sockaddr_in6*>(&address);
        six->sin6_family = AF_INET6;
        six->sin6_port = htons(static_cast<std::uint16_t>(port));
        six->sin6_addr = in6addr_any;
        length = sizeof(sockaddr_in6);
    } else {
        auto* four = reinterpret_cast<sockaddr_in*>(&address);
        four->sin_family = AF_INET;
        four->sin_port = htons(static_cast<std::uint16_t>(port));
        four->sin_addr.s_addr = htonl(INADDR_ANY);
        length = sizeof(sockaddr_in);
    }
    const int listener = socket(address.ss_family, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (listener < 0) {
        return false;
    }
    const int sixOnly = 1;
    if (ipv6Only) {
        setsockopt(listener, IPPROTO_IPV6, IPV6_V6ONLY, &sixOnly, sizeof sixOnly);
    }
    return bind(listener, reinterpret_cast<const sockaddr*>(&address), length) == 0 &&
           listen(listener, SOMAXCONN) == 0;
}

void sleepSeconds(unsigned seconds) {
    sleep(seconds);
}

} // namespace portholder::native
