#pragma once

#include <cstdint>

// A lock held across the test processes of the machine (or of the Windows prefix): a file lock on
// the named file of the temporary folder (under Windows the folder that all users share), shared
// or exclusive.
class TestFileLock {
public:
    TestFileLock(const char* fileName, bool exclusive);
    ~TestFileLock();
    TestFileLock(const TestFileLock&) = delete;
    TestFileLock& operator=(const TestFileLock&) = delete;

private:
    std::intptr_t handle_ = -1;
};
