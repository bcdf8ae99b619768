#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "tests/support/foundation/test_file_lock.h"

// What the host model's tests need of the system beyond the product's own functions.

// Sets a variable of this process's environment.
void hostModelSetEnvironment(const char* name, const std::string& value);

// Makes the product's registry key "Software\Ormal Co\CorvaniteHost" under HKEY_CURRENT_USER,
// which the program itself never creates.
void hostModelCreateProductKey();

// Removes a value of the product's key; true when it is gone.
bool hostModelDeleteProductValue(const char* name);

// This test process's id.
std::uint32_t hostModelCurrentProcessId();

// A TCP port on 127.0.0.1 that nothing listens on at this moment.
std::uint16_t hostModelFreePort();

// The product's registry key is shared by every test process of a Windows prefix: while one of
// these lives, no other test process that takes it changes the key's values. Elsewhere each test
// process has a registry of its own and the lock does nothing.
class HostModelRegistryLock {
public:
    HostModelRegistryLock();
    ~HostModelRegistryLock();
    HostModelRegistryLock(const HostModelRegistryLock&) = delete;
    HostModelRegistryLock& operator=(const HostModelRegistryLock&) = delete;

private:
    void* handle_ = nullptr;
};

// The server's stop kills every process named "CorvaniteHost.exe" of the user, so a test that
// lets it do so must not run beside a test whose server it would take: tests that run servers
// share this lock, the one that has them killed holds it alone.
class HostModelServerLock : public TestFileLock {
public:
    explicit HostModelServerLock(bool exclusive)
        : TestFileLock("corvanite-server-tests.lock", exclusive) {}
};
