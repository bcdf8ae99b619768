#include "tests/support/foundation/test_file_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <stdexcept>
#include <string>

TestFileLock::TestFileLock(const char* fileName, bool exclusive) {
    const std::string path = (std::filesystem::temp_directory_path() / fileName).string();
    const int file = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
    if (file < 0) {
        throw std::runtime_error(std::string("the tests' lock file can't be opened: ") + fileName);
    }
    while (flock(file, exclusive ? LOCK_EX : LOCK_SH) != 0) {
        if (errno != EINTR) {
            close(file);
            throw std::runtime_error(std::string("the tests' lock can't be taken: ") + fileName);
        }
    }
    handle_ = file;
}

TestFileLock::~TestFileLock() {
    if (handle_ >= 0) {
        flock(static_cast<int>(handle_), LOCK_UN);
        close(static_cast<int>(handle_));
    }
}
