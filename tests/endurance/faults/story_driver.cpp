#include "endurance/faults/story_driver.h"

#include "resource.h"
#include "support/wait_until.h"

namespace tavrin::test {
namespace {

using namespace std::chrono_literals;

// Timers of the main window. Sending WM_TIMER runs their handlers at once.
constexpr WPARAM kFilterTextTimer = 2;
constexpr WPARAM kLiveCheckTimer = 3;
constexpr WPARAM kFilterApplyTimer = 4;

// Much longer than a story in which every wait times out.
constexpr auto kLongestStory = 120s;

// The replay service looks for new events every 50 ms.
constexpr auto kArrival = 300ms;

}  // namespace

StoryDriver::StoryDriver(const FaultRecording& recording, const Story& story,
                         const std::optional<Fault>& fault)
    : recording_(recording) {
    options_.logs = recording.folder();
    options_.script = fault ? ScriptLine(*fault) : L"";
    options_.recordCalls = true;
    // The list of a minimised window shows no row, so it does not resume a paused load.
    options_.showCommand = story.Has(Action::SelectLargeChannel) ? SW_SHOWMINIMIZED : SW_SHOWNORMAL;
}

void StoryDriver::Take(const Step& step) {
    if (step.action == Action::Start) {
        app_.emplace(options_);
        deadline_.emplace(app_->process().handle(), kLongestStory);
        app_->WaitForTree();
        return;
    }
    if (step.action != Action::SelectEvent && step.action != Action::EventArrives) {
        ForgetLoaded();
    }
    switch (step.action) {
        case Action::Start: break;
        case Action::SelectSmallChannel: app_->SelectPath(SmallChannel().treePath); break;
        case Action::SelectLargeChannel: app_->SelectPath(LargeChannel().treePath); break;
        case Action::SelectEvent: app_->list().Select(step.row); break;
        case Action::SetAsFrom: SendMessageW(app_->window(), WM_COMMAND, IDM_SET_AS_FROM, 0); break;
        case Action::TickSource:
            app_->sources().SetChecked(step.row, true);
            SendMessageW(app_->window(), WM_TIMER, kFilterApplyTimer, 0);
            break;
        case Action::TypeFilterText:
            SendMessageW(app_->controls().filterEdit, WM_SETTEXT, 0,
                         reinterpret_cast<LPARAM>(kTypedText));
            SendMessageW(app_->window(), WM_TIMER, kFilterTextTimer, 0);
            break;
        case Action::ScrollToEnd: ScrollToEnd(); break;
        case Action::Refresh: SendMessageW(app_->window(), WM_COMMAND, IDM_REFRESH, 0); break;
        case Action::EventArrives: MakeEventArrive(); break;
    }
}

std::vector<TreeLine> StoryDriver::Tree() {
    std::vector<TreeLine> lines;
    for (const TreeEntry& entry : app_->tree().Entries()) {
        lines.push_back({entry.depth, entry.text, entry.image});
    }
    return lines;
}

WindowTexts StoryDriver::Texts() {
    std::wstring sources;
    for (int row = 0; row < app_->sources().RowCount(); ++row) {
        sources += (app_->sources().IsChecked(row) ? L"[x] " : L"[ ] ") +
                   app_->sources().Cell(row, 0) + L"\n";
    }
    return {{"loaded", app_->Loaded()},
            {"total", app_->Total()},
            {"total's caption", app_->TotalCaption()},
            {"node's name", app_->NodeName()},
            {"status", app_->Status()},
            {"details", app_->Details()},
            {"sources", sources}};
}

CallCounts StoryDriver::Calls() const {
    CallCounts calls = app_->process().CallCounts();
    calls.erase(L"EvtClose");
    return calls;
}

void StoryDriver::ScrollToEnd() {
    ShowWindow(app_->window(), SW_RESTORE);
    WaitUntil([&] { return ClientSize(app_->controls().list).cy > 100; });
    app_->list().EnsureVisible(app_->list().RowCount() - 1);
}

// If a notice does not come in this time, the window's own timer shows it later.
void StoryDriver::MakeEventArrive() {
    recording_.Append(ArrivingEvent());
    const std::wstring before = app_->Status();
    WaitUntil(
        [&] {
            SendMessageW(app_->window(), WM_TIMER, kLiveCheckTimer, 0);
            return app_->Status() != before;
        },
        kArrival);
}

// Keeps the last load's count from being mistaken for the next one's.
void StoryDriver::ForgetLoaded() {
    SendMessageW(app_->controls().loadedValue, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"?"));
}

}  // namespace tavrin::test
