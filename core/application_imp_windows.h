#pragma once

#include <windows.h>

#include "core/application.h"

// The Windows application: the native window, and the message loop that runs the program until
// the window is destroyed or a failure in a message's handling ends it.
class ApplicationImp : public Application {
public:
    explicit ApplicationImp(const WindowRecord& record);

    // Shows the window unless the line holds "--silent" anywhere, then runs the message loop.
    // The exit code is the quit message's; a failure met while dispatching is thrown from here.
    std::int32_t run(const std::string& commandLine) override;
    // Destroys the window, which ends the loop.
    void quit() override;
};
