#pragma once

#include <functional>
#include <string>

// The road from the command line to the message loop and back. The order of the steps matters:
// the language stands before anything can be reported, the instance test before the host can
// start a server, the installation test before the host is built.
struct StartupSteps {
    // Puts the catalogues into the user's language; runs outside the failure handler.
    std::function<void()> applyStartupLanguage;
    std::function<void()> quitRunningInstance;
    // True when another instance runs and this one must end.
    std::function<bool()> ensureSingleInstance;
    std::function<bool()> checkInstallation;
    std::function<void()> syncDisplayVersion;
    // Builds the application and runs its message loop; the result is the exit code.
    std::function<int(const std::string& commandLine)> runApplication;
};

// The program's whole life for a command line (the whole line, not split into arguments). Every
// std::exception that gets here is shown in a box captioned "Corvanite" and gives exit code 1.
int runControlPanel(const std::string& commandLine, const StartupSteps& steps);

// True only for the line "--quit" exactly: no blanks, no other switch, matching case.
bool isQuitSwitch(const std::string& commandLine);
