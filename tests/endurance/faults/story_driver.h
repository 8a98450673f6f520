#pragma once

#include <optional>
#include <vector>

#include "window/harness/deadline.h"
#include "endurance/faults/expected_window.h"
#include "endurance/faults/stories.h"
#include "endurance/faults/story_channels.h"
#include "window/harness/app_window.h"

namespace tavrin::test {

// Takes the steps of a story in the real window and reads what the window shows.
class StoryDriver {
public:
    StoryDriver(const FaultRecording& recording, const Story& story,
                const std::optional<Fault>& fault);

    void Take(const Step& step);

    AppWindow& app() { return *app_; }
    std::vector<TreeLine> Tree();
    WindowTexts Texts();

    // The program's calls so far, except those of EvtClose.
    CallCounts Calls() const;

private:
    void ScrollToEnd();
    void MakeEventArrive();
    void ForgetLoaded();

    const FaultRecording& recording_;
    AppOptions options_;
    std::optional<AppWindow> app_;
    std::optional<Deadline> deadline_;
};

}  // namespace tavrin::test
