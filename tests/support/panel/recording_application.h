#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "core/application.h"
#include "tests/support/panel/recording_window.h"

// An application around the recording window: run records the command line and shows the
// window unless told "--silent", quit destroys the window, as the native application does.
class RecordingApplication : public Application {
public:
    RecordingApplication(std::shared_ptr<RecordingWindow> window,
                         const utils::AppDataManager& layout);

    std::int32_t run(const std::string& commandLine) override;
    void quit() override;

    RecordingWindow& recordingWindow() { return *window_; }
    int quits() const { return quits_; }

private:
    std::shared_ptr<RecordingWindow> window_;
    int quits_ = 0;
};

// The recording window for the layout's window record.
std::shared_ptr<RecordingWindow> makeRecordingWindow(const utils::AppDataManager& layout,
                                                     RecordingWindow::Options options = {});
