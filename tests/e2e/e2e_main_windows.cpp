// The end-to-end tests' entry: GoogleTest's, and then the test process ends at once. Under Wine
// the ordinary end of a process that drove other programs' windows now and again never finished,
// after every test had passed and the results were printed, and the run then counted as a
// time-out. Nothing is left to tidy at that point: each test ends its programs and removes its
// installation itself.
#include <windows.h>

#include <cstdio>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const int code = RUN_ALL_TESTS();
    std::fflush(stdout);
    std::fflush(stderr);
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(code));
    return code;
}
