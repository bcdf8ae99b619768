#include "tests/support/panel/recording_application.h"

#include <utility>

RecordingApplication::RecordingApplication(std::shared_ptr<RecordingWindow> window,
                                           const utils::AppDataManager& layout)
    : Application(window, layout), window_(std::move(window)) {}

std::int32_t RecordingApplication::run(const std::string& commandLine) {
    if (commandLine.find("--silent") == std::string::npos) {
        window().show();
    }
    return 0;
}

void RecordingApplication::quit() {
    ++quits_;
    window().destroy();
}

std::shared_ptr<RecordingWindow> makeRecordingWindow(const utils::AppDataManager& layout,
                                                     RecordingWindow::Options options) {
    const WindowRecord record = layout.window();
    return std::make_shared<RecordingWindow>(record.title, record.size, options);
}
