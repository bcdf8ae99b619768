#include "tests/support/host/model_system.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>

namespace {

std::filesystem::path productKeyFolder() {
    const char* root = std::getenv("CORVANITE_REGISTRY");
    if (root == nullptr) {
        throw std::runtime_error("CORVANITE_REGISTRY is not set for the test");
    }
    return std::filesystem::path(root) / "HKEY_CURRENT_USER" / "Software" / "Ormal Co" /
           "CorvaniteHost";
}

} // namespace

void hostModelSetEnvironment(const char* name, const std::string& value) {
    setenv(name, value.c_str(), 1);
}

void hostModelCreateProductKey() {
    std::filesystem::create_directories(productKeyFolder());
}

bool hostModelDeleteProductValue(const char* name) {
    std::error_code ignored;
    std::filesystem::remove(productKeyFolder() / name, ignored);
    return !std::filesystem::exists(productKeyFolder() / name, ignored);
}

std::uint32_t hostModelCurrentProcessId() {
    return static_cast<std::uint32_t>(getpid());
}

std::uint16_t hostModelFreePort() {
    const int s = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = 0;
    socklen_t length = sizeof(address);
    if (s < 0 || bind(s, reinterpret_cast<sockaddr*>(&address), sizeof(address)) != 0 ||
        getsockname(s, reinterpret_cast<sockaddr*>(&address), &length) != 0) {
        if (s >= 0) {
            close(s);
        }
        throw std::runtime_error("no free port");
    }
    close(s);
    return ntohs(address.sin_port);
}

HostModelRegistryLock::HostModelRegistryLock() = default;
HostModelRegistryLock::~HostModelRegistryLock() = default;
