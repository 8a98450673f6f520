#include "endurance/faults/story_driver.h"

#include <stdexcept>

#include <gtest/gtest.h>

#include "resource.h"
#include "support/wait_until.h"
#include "window/expected/expected_texts.h"
#include "window/harness/test_logs.h"

namespace tavrin::test {
namespace {

using namespace std::chrono_literals;

constexpr auto kLongestStory = 60s;  // usually it takes a second or two
constexpr auto kRest = 300ms;
constexpr int kRecordIdColumn = 5;

constexpr wchar_t kSmallPath[] = L"Acme-Tools/Operational";

std::wstring TimeText(int second) {
    const std::wstring seconds = std::to_wstring(100 + second % 60).substr(1);
    return L"2024-03-05T07:0" + std::to_wstring(second / 60) + L":" + seconds + L".0000000Z";
}

RecordedEvent NumberedEvent(int id) {
    RecordedEvent event;
    event.recordId = static_cast<std::uint64_t>(id);
    event.provider = id % 2 == 0 ? L"Acme-Tools" : L"Acme-Other";
    event.time = TimeText(id);
    return event;
}

// The newest event has a message, the second none, the third an unregistered provider.
std::vector<RecordedEvent> SmallEvents() {
    std::vector<RecordedEvent> events;
    for (int id = 1; id <= kSmallList.rows; ++id) {
        events.push_back(NumberedEvent(id));
    }
    events.end()[-2].message.reset();
    events.end()[-3].message.reset();
    events.end()[-3].provider = L"Gone-Provider";
    return events;
}

AppOptions OptionsFor(const Recording& logs, const std::wstring& script) {
    AppOptions options = Serving(logs, script);
    options.recordCalls = true;
    return options;
}

}  // namespace

StoryRecording::StoryRecording()
    : Recording({{.name = L"Application"},
                 {.name = kSmallPath, .type = L"Operational", .publisher = L"Acme-Tools"},
                 {.name = L"Large", .attributes = L"events=\"10400\""}}) {
    WriteEvents(kSmallPath, SmallEvents());
}

void StoryRecording::AddNewEvent() const {
    AppendEvent(kSmallPath, NumberedEvent(kSmallList.newestId + 1));
}

StoryDriver::StoryDriver(const std::wstring& script)
    : app_(OptionsFor(logs_, script)), deadline_(app_.process().handle(), kLongestStory) {}

void StoryDriver::Take(const std::vector<Step>& steps) {
    for (const Step step : steps) {
        (this->*step)();
        app_.Synchronise();
        if (!app_.process().IsRunning()) {
            throw std::runtime_error("the program ended in its story");
        }
    }
}

void StoryDriver::WaitForTree() {
    EXPECT_TRUE(app_.WaitForTree());
}

// A minimised list shows no row, so it never raises the load limit.
void StoryDriver::Minimise() {
    ShowWindow(app_.window(), SW_MINIMIZE);
    EXPECT_TRUE(WaitUntil([&] { return IsIconic(app_.window()) != FALSE; }));
}

void StoryDriver::SelectSmallChannel() {
    EXPECT_TRUE(app_.SelectPath(kSmallChannel));
}

void StoryDriver::SelectLargeChannel() {
    EXPECT_TRUE(app_.SelectPath(kLargeChannel));
}

void StoryDriver::SetAsFrom() {
    SendMessageW(app_.window(), WM_COMMAND, IDM_SET_AS_FROM, 0);
}

void StoryDriver::TickSource() {
    constexpr int kAcmeTools = 1;
    app_.sources().SetChecked(kAcmeTools, true);
    app_.Expire(Timer::FilterApply);
}

// The provider's name of every event in the large channel contains the text.
void StoryDriver::TypeFilterText() {
    SendMessageW(app_.controls().filterEdit, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"synthetic"));
    app_.Expire(Timer::FilterText);
}

void StoryDriver::ScrollToEnd() {
    ShowWindow(app_.window(), SW_RESTORE);
    EXPECT_TRUE(WaitUntil([&] { return ClientSize(app_.controls().list).cy > 100; }));
    app_.list().EnsureVisible(app_.list().RowCount() - 1);
}

// Overwrites the count first, so that it cannot be taken for the count of the new load.
void StoryDriver::Refresh() {
    SendMessageW(app_.controls().loadedValue, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"?"));
    SendMessageW(app_.window(), WM_COMMAND, IDM_REFRESH, 0);
}

void StoryDriver::MeetNewEvent() {
    EXPECT_TRUE(WaitUntil([&] { return HasLoaded(kSmallList); }));
    logs_.AddNewEvent();
    EXPECT_TRUE(WaitUntil([&] {
        app_.Expire(Timer::LiveCheck);
        return app_.Status() == kNewEventsNotice;
    }));
}

bool StoryDriver::HasLoaded(const WholeList& list) const {
    return app_.Loaded() == FormatCount(static_cast<std::uint64_t>(list.rows));
}

bool StoryDriver::Shows(const WholeList& list) {
    ListReader& shown = app_.list();
    return HasLoaded(list) && shown.RowCount() == list.rows &&
           shown.Cell(0, kRecordIdColumn) == std::to_wstring(list.newestId) &&
           shown.Cell(list.rows - 1, kRecordIdColumn) == std::to_wstring(list.oldestId) &&
           app_.Total() == FormatCount(static_cast<std::uint64_t>(list.total));
}

bool StoryDriver::ShowsLoadFailure() const {
    const std::wstring status = app_.Status();
    return status.starts_with(L"Failed to load ") || status.starts_with(L"Loading stopped after ");
}

Progress StoryDriver::CurrentProgress() const {
    return {app_.process().CallCounts(), app_.Loaded()};
}

Progress StoryDriver::WaitForRest() const {
    Progress progress;
    do {
        progress = CurrentProgress();
    } while (!HoldsFor(kRest, [&] { return CurrentProgress() == progress; }));
    return progress;
}

void StoryDriver::SelectRow(int row) {
    EXPECT_TRUE(WaitUntil([&] { return app_.list().RowCount() > row; }));
    app_.list().Select(row);
}

}  // namespace tavrin::test
