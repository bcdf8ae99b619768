#include "core/program_entry.h"

#include <exception>
#include <stdexcept>

#include "foundation/message_box.h"
#include "foundation/message_catalogue.h"

bool isQuitSwitch(const std::string& commandLine) {
    return commandLine == "--quit";
}

int runControlPanel(const std::string& commandLine, const StartupSteps& steps) {
    steps.applyStartupLanguage();
    try {
        if (isQuitSwitch(commandLine)) {
            steps.quitRunningInstance();
            return 0;
        }
        if (steps.ensureSingleInstance()) {
            return 0;
        }
        if (!steps.checkInstallation()) {
            throw std::runtime_error(
                panelMessages.format(panelmsg::serverFilesMissing, productName));
        }
        steps.syncDisplayVersion();
        return steps.runApplication(commandLine);
    } catch (const std::exception& failure) {
        showMessageBox(productName, failure.what(), MessageBoxKind::error);
        return 1;
    }
}
