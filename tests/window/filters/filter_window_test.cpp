#include "window/filters/filter_window_test.h"

#include "support/wait_until.h"
#include "window/controls/input.h"
#include "window/harness/test_logs.h"

namespace tavrin::test {

std::vector<RecordedEvent> FilterWindowTest::TenEvents() {
    const wchar_t* const kProviders[] = {L"Acme-Mail", L"Beta", L"MsiInstaller"};
    std::vector<RecordedEvent> events = Events(10);
    for (std::size_t i = 0; i < events.size(); ++i) {
        events[i].provider = kProviders[i % 3];
        events[i].level = static_cast<unsigned>(i % 4) + 1;
        events[i].processId = static_cast<std::uint32_t>(100 + i);
        events[i].time = L"2024-03-05T07:0" + std::to_wstring(i) + L":30.0000000Z";
    }
    return events;
}

FilterWindowTest::FilterWindowTest() : logs_(kSomeChannels) {}

void FilterWindowTest::Show(const std::vector<RecordedEvent>& events) {
    logs_.WriteEvents(L"Application", events);
    Begin();
    ASSERT_TRUE(app_->SelectPath(kApplication));
    ASSERT_TRUE(app_->WaitForRows(static_cast<int>(events.size())));
    ASSERT_TRUE(WaitUntil([&] { return app_->sources().RowCount() > 0; }));
}

void FilterWindowTest::Begin(const std::wstring& script) {
    AppOptions options = Serving(logs_, script);
    options.recordCalls = true;
    Start(options);
    driver_ = std::make_unique<FilterDriver>(*app_);
    ASSERT_TRUE(BringToFront(app_->window()));
}

void FilterWindowTest::Tick(HWND picker) const {
    driver_->ClickPickerBox(picker);
    ASSERT_TRUE(WaitUntil([&] { return driver_->TimeOf(picker).has_value(); }));
}

void FilterWindowTest::Untick(HWND picker) const {
    driver_->ClickPickerBox(picker);
    ASSERT_TRUE(WaitUntil([&] { return !driver_->TimeOf(picker); }));
}

}  // namespace tavrin::test
