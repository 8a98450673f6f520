#include "endurance/faults/story_driver.h"

#include "resource.h"
#include "support/wait_until.h"

namespace tavrin::test {
namespace {

using namespace std::chrono_literals;

// Timers of the main window; what their end brings comes at once when it is sent.
constexpr WPARAM kFilterTextTimer = 2;
constexpr WPARAM kLiveCheckTimer = 3;
constexpr WPARAM kFilterApplyTimer = 4;

// Much longer than one that fails in all its waits.
constexpr auto kLongestStory = 120s;

// The service looks for new events every 50 ms.
constexpr auto kArrival = 300ms;

}  // namespace

StoryDriver::StoryDriver(const FaultRecording& recording, const Story& story,
                         const std::optional<Fault>& fault)
    : recording_(recording) {
    options_.logs = recording.folder();
    options_.script = fault ? ScriptLine(*fault) : L"";
    options_.recordCalls = true;
    // A minimised list shows no row, and so does not make a paused load go on.
    options_.showCommand = story.Has(Deed::SelectLargeChannel) ? SW_SHOWMINIMIZED : SW_SHOWNORMAL;
}

void StoryDriver::Take(const Step& step) {
    if (step.deed == Deed::Start) {
        app_.emplace(options_);
        deadline_.emplace(app_->process().handle(), kLongestStory);
        app_->WaitForTree();
        return;
    }
    if (step.deed != Deed::SelectEvent && step.deed != Deed::EventArrives) {
        ForgetLoaded();
    }
    switch (step.deed) {
        case Deed::Start: break;
        case Deed::SelectSmallChannel: app_->SelectPath(SmallChannel().treePath); break;
        case Deed::SelectLargeChannel: app_->SelectPath(LargeChannel().treePath); break;
        case Deed::SelectEvent: app_->list().Select(step.row); break;
        case Deed::SetAsFrom: SendMessageW(app_->window(), WM_COMMAND, IDM_SET_AS_FROM, 0); break;
        case Deed::TickSource:
            app_->sources().SetChecked(step.row, true);
            SendMessageW(app_->window(), WM_TIMER, kFilterApplyTimer, 0);
            break;
        case Deed::TypeFilterText:
            SendMessageW(app_->controls().filterEdit, WM_SETTEXT, 0,
                         reinterpret_cast<LPARAM>(kTypedText));
            SendMessageW(app_->window(), WM_TIMER, kFilterTextTimer, 0);
            break;
        case Deed::ScrollToEnd: ScrollToEnd(); break;
        case Deed::Refresh: SendMessageW(app_->window(), WM_COMMAND, IDM_REFRESH, 0); break;
        case Deed::EventArrives: MakeEventArrive(); break;
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

// Where a notice is due, the window's own timer brings it in the end.
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

// So that the count of the last load is not taken for that of the next one.
void StoryDriver::ForgetLoaded() {
    SendMessageW(app_->controls().loadedValue, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"?"));
}

}  // namespace tavrin::test
