#include <algorithm>
#include <cstdio>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "endurance/holdings.h"
#include "resource.h"
#include "support/private_bytes.h"
#include "support/wait_until.h"
#include "window/controls/input.h"
#include "window/controls/top_windows.h"
#include "window/filters/filter_driver.h"
#include "window/filters/filter_expectations.h"
#include "window/harness/environment.h"
#include "window/harness/service_script.h"
#include "window/harness/test_logs.h"
#include "window/harness/window_test.h"

namespace tavrin::test {
namespace {

using namespace std::chrono_literals;

constexpr unsigned kUsualActions = 1000;
constexpr unsigned kWarmUpActions = 100;
constexpr unsigned kQuarters = 4;
constexpr int kLargeEvents = 200'000;
// By how much the memory's high-water mark may grow from the second quarter to the last.
constexpr std::size_t kPlateau = 8 * 1024 * 1024;
// Objects that the system's controls create once, such as tooltips, and the mutexes' events.
constexpr ProcessResources kFirstUse = {
    .gdiObjects = 24,
    .userObjects = 6,
    .kernelHandles = 5 * kLockHandlesOfAChannel + kLockHandlesOfTheDisposer + kLastCounter};
// Only detects a hang. The test prints how long closing took.
constexpr auto kEndLimit = 15s;

const std::wstring kTexts[] = {L"", L"", L"error", L"synthetic-provider-03", L"no such", L"/03/"};
const std::wstring kSearches[] = {L"", L"1", L"x"};
const WORD kListKeys[] = {VK_DOWN, VK_DOWN, VK_UP, VK_NEXT, VK_PRIOR, VK_HOME, VK_END};

const std::vector<std::wstring> kServices = {L"Applications and Service Logs"};
const std::vector<std::wstring> kLarge = {L"Applications and Service Logs", L"Large"};
const std::vector<std::wstring> kFailing = {L"Applications and Service Logs", L"Failing"};
const std::vector<std::wstring> kBreaking = {L"Applications and Service Logs", L"Breaking"};
const std::vector<std::wstring> kShown[] = {kApplication, kSystem, kLarge, kFailing, kBreaking};

std::vector<RecordedEvent> MixedEvents(std::size_t count, const std::wstring& provider) {
    std::vector<RecordedEvent> events = Events(count);
    for (std::size_t i = 0; i < count; ++i) {
        events[i].provider = provider + std::to_wstring(i % 9);
        events[i].level = static_cast<unsigned>(i % 6);
    }
    return events;
}

// Makes every fourth EvtNext for the channel fail, up to call 400: most of its first hundred loads
// break off.
std::wstring BreakLoads(const std::wstring& channel) {
    std::wstring script;
    for (unsigned call = 4; call < 400; call += 4) {
        script += FailCall(L"EvtNext", 15011, channel, call);
    }
    return script;
}

// Performs random user actions in the window for a long time.
class Soak : public WindowTest {
protected:
    Soak()
        : seed_(NumberFromEnvironment(L"TAVRIN_SOAK_SEED", std::random_device{}())),
          random_(seed_) {
        std::printf("TAVRIN_SOAK_SEED=%u\n", seed_);
        std::fflush(stdout);
    }

    void SetUp() override {
        logs_.WriteEvents(L"Application", application_);
        logs_.WriteEvents(L"System", MixedEvents(60, L"Second"));
        logs_.WriteEvents(L"Breaking", MixedEvents(600, L"Third"));
        Start(Serving(logs_, BreakLoads(L"Breaking") + FailCall(L"EvtQuery", 15007, L"Failing")));
        driver_ = std::make_unique<FilterDriver>(*app_);
        // At the origin the window is wholly on the screen at every size.
        SetWindowPos(app_->window(), nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
        ASSERT_TRUE(BringToFront(app_->window()));
    }

    std::size_t Random(std::size_t end) {
        return std::uniform_int_distribution<std::size_t>(0, end - 1)(random_);
    }
    int Between(int least, int most) {
        return std::uniform_int_distribution<int>(least, most)(random_);
    }
    template <typename Range>
    const auto& OneOf(const Range& range) {
        return *(std::begin(range) + static_cast<std::ptrdiff_t>(Random(std::size(range))));
    }

    void ShowAChannel() { driver_->ClickTree(OneOf(kShown)); }
    void ShowAFolder() { driver_->ClickTree(OneOf(std::vector{kWindowsLogs, kServices})); }
    void TypeInto(HWND edit, const std::wstring& text);
    void PressAListKey();
    void ClickARow();
    void Scroll();
    void TypeAFilter() { TypeInto(app_->controls().filterEdit, OneOf(kTexts)); }
    void SearchSources() { TypeInto(app_->controls().sourcesSearch, OneOf(kSearches)); }
    void TickASource();
    void ShowAllSources() { driver_->ClickShowAll(); }
    void TickAPicker() {
        driver_->ClickPickerBox(
            OneOf(std::vector{app_->controls().fromPicker, app_->controls().toPicker}));
    }
    void SetABound();
    void Refresh() { PressKey(VK_F5); }
    void Resize() { EXPECT_TRUE(app_->ResizeClient(Between(760, 1100), Between(500, 800))); }
    void DragASplitter();
    void MoveTheFocus();
    void OpenTheMenu();
    void OpenAbout();
    void LetAnEventArrive();

    void DoSomething();

    // Restores the state in which resources are compared: every channel was read again without
    // filters, and the first one is shown.
    void ComeToRest();
    void Unfilter();
    // Types again if earlier input, still in the queue, took the focus or cleared the edit.
    bool Filters(const std::wstring& text) {
        return WaitUntil([&] {
            TypeInto(app_->controls().filterEdit, text);
            return WaitUntil([&] { return app_->FilterText() == text; }, 1s);
        });
    }
    // Returns whether the newest `rows` of a channel's events are in the list. The record ids of
    // the channel run from 1 to `events`.
    bool IsLoaded(int events, int rows) {
        return app_->list().RowCount() >= rows &&
               app_->list().Cell(rows - 1, 5) == std::to_wstring(events - rows + 1);
    }
    void ReadAgain(const std::vector<std::wstring>& channel);

    // Returns the program's memory with the largest channel loaded to its end.
    std::size_t HighWater();

    void ExpectTheRowsOfApplication();
    void ExpectThePrefixOfLarge();

    std::vector<RecordedEvent> application_ = MixedEvents(400, L"First");
    const Recording logs_{{{.name = L"Application"},
                           {.name = L"System"},
                           {.name = L"Large",
                            .attributes = L"events=\"200000\" providers=\"12\" "
                                          L"levels=\"1,2,3,4,5\""},
                           {.name = L"Failing"},
                           {.name = L"Breaking"}}};
    const unsigned seed_;
    std::mt19937 random_;
    std::unique_ptr<FilterDriver> driver_;
};

// Uses input only, which the window handles after the input before it.
void Soak::TypeInto(HWND edit, const std::wstring& text) {
    ClickLeft(CentreOf(edit));
    PressWith(VK_CONTROL, 'A');
    PressKey(VK_DELETE);
    TypeText(text);
}

void Soak::PressAListKey() {
    ASSERT_TRUE(GiveFocus(app_->controls().list));
    PressKey(OneOf(kListKeys));
}

void Soak::ClickARow() {
    const HWND list = app_->controls().list;
    const int inView = static_cast<int>(SendMessageW(list, LVM_GETCOUNTPERPAGE, 0, 0));
    const int top = static_cast<int>(SendMessageW(list, LVM_GETTOPINDEX, 0, 0));
    const int rows = std::min(inView, app_->list().RowCount() - top);
    if (rows > 0) {
        RECT rect = app_->list().RowRect(top + Between(0, rows - 1), LVIR_BOUNDS);
        rect.right = rect.left + 100;
        ClickLeft(CentreOf(rect));
    }
}

void Soak::Scroll() {
    SendMessageW(app_->controls().list, WM_VSCROLL,
                 OneOf(std::vector<WPARAM>{SB_PAGEDOWN, SB_PAGEUP, SB_LINEDOWN, SB_LINEUP}), 0);
}

void Soak::TickASource() {
    const int rows = app_->sources().RowCount();
    if (rows > 0) {
        driver_->ClickSource(Between(0, rows - 1));
    }
}

void Soak::SetABound() {
    if (app_->list().RowCount() > 0) {
        driver_->UseMenu(0, OneOf(std::vector{MenuEntry::SetAsFrom, MenuEntry::SetAsTo}));
    }
}

void Soak::DragASplitter() {
    const HWND window = app_->window();
    const RECT tree = RectIn(window, app_->controls().tree);
    const RECT sources = RectIn(window, app_->controls().sourcesFrame);
    const RECT details = RectIn(window, app_->controls().detailsFrame);
    const POINT splitters[] = {{tree.right + 2, tree.bottom / 2},
                               {sources.left - 2, tree.bottom / 2},
                               {(details.left + details.right) / 2, details.top - 2}};
    POINT from = OneOf(splitters);
    ClientToScreen(window, &from);
    DragLeft(from, {from.x + Between(-60, 60), from.y + Between(-60, 60)});
}

void Soak::MoveTheFocus() {
    const MainWindowControls& controls = app_->controls();
    const HWND control = OneOf(std::vector{controls.tree, controls.list, controls.filterEdit,
                                           controls.detailsEdit, controls.sourcesList});
    if (IsWindowEnabled(control)) {
        ASSERT_TRUE(GiveFocus(control));
    }
}

void Soak::OpenTheMenu() {
    RECT list{};
    GetWindowRect(app_->controls().list, &list);
    ClickRight(CentreOf(list));
    ASSERT_NE(WaitForTopWindow(app_->process().id(), kPopupMenuClass), nullptr)
        << "the list at " << list.left << ", " << list.top << " to " << list.right << ", "
        << list.bottom << ", below the mouse " << WindowFromPoint(CentreOf(list));
    PressKey(VK_ESCAPE);
    ASSERT_TRUE(WaitForNoTopWindow(app_->process().id(), kPopupMenuClass));
}

void Soak::OpenAbout() {
    app_->Command(IDM_ABOUT);
    const HWND about = WaitForTopWindow(app_->process().id(), kDialogClass);
    ASSERT_NE(about, nullptr);
    ASSERT_TRUE(BringToFront(about));
    PressKey(VK_ESCAPE);
    ASSERT_TRUE(WaitForNoTopWindow(app_->process().id(), kDialogClass));
    ASSERT_TRUE(BringToFront(app_->window()));
}

void Soak::LetAnEventArrive() {
    application_.push_back({.recordId = application_.size() + 1, .provider = L"First9"});
    logs_.AppendEvent(L"Application", application_.back());
}

void Soak::DoSomething() {
    struct Action {
        const char* name;
        void (Soak::*run)();
        double weight;
    };
    static constexpr Action kActions[] = {{"ShowAChannel", &Soak::ShowAChannel, 5},
                                          {"ShowAFolder", &Soak::ShowAFolder, 1},
                                          {"PressAListKey", &Soak::PressAListKey, 14},
                                          {"ClickARow", &Soak::ClickARow, 8},
                                          {"Scroll", &Soak::Scroll, 8},
                                          {"TypeAFilter", &Soak::TypeAFilter, 3},
                                          {"SearchSources", &Soak::SearchSources, 2},
                                          {"TickASource", &Soak::TickASource, 3},
                                          {"ShowAllSources", &Soak::ShowAllSources, 2},
                                          {"TickAPicker", &Soak::TickAPicker, 3},
                                          {"SetABound", &Soak::SetABound, 0.5},
                                          {"Refresh", &Soak::Refresh, 4},
                                          {"Resize", &Soak::Resize, 2},
                                          {"DragASplitter", &Soak::DragASplitter, 1},
                                          {"MoveTheFocus", &Soak::MoveTheFocus, 4},
                                          {"OpenTheMenu", &Soak::OpenTheMenu, 1},
                                          {"OpenAbout", &Soak::OpenAbout, 1},
                                          {"LetAnEventArrive", &Soak::LetAnEventArrive, 1}};
    std::vector<double> weights;
    std::ranges::transform(kActions, std::back_inserter(weights), &Action::weight);
    std::discrete_distribution<std::size_t> choice(weights.begin(), weights.end());
    const Action& action = kActions[choice(random_)];
    SCOPED_TRACE(action.name);
    (this->*action.run)();
    app_->Synchronise();
}

void Soak::Unfilter() {
    // Input arrives in order: when this text is there, every earlier click has been handled.
    ASSERT_TRUE(Filters(L"settled"));
    const MainWindowControls& controls = app_->controls();
    for (const HWND picker : {controls.fromPicker, controls.toPicker}) {
        const auto time = [&] { return picker == controls.fromPicker ? app_->From() : app_->To(); };
        if (time()) {
            driver_->ClickPickerBox(picker);
            ASSERT_TRUE(WaitUntil([&] { return !time(); }));
        }
    }
    app_->Expire(Timer::FilterApply);
    ASSERT_TRUE(Filters(L""));
}

void Soak::ReadAgain(const std::vector<std::wstring>& channel) {
    ASSERT_TRUE(app_->SelectPath(channel));
    driver_->TypeSearch(L"");
    driver_->ClickShowAll();
    ASSERT_TRUE(WaitUntil([&] {
        return TextOf(app_->controls().sourcesCaption) == L"Sources (all)" &&
               app_->TotalCaption() == L" Total: ";
    }));
    SendMessageW(app_->window(), WM_COMMAND, IDM_REFRESH, 0);
}

void Soak::ComeToRest() {
    ASSERT_TRUE(BringToFront(app_->window()));
    Unfilter();
    ReadAgain(kFailing);
    ASSERT_TRUE(WaitUntil([&] { return app_->Status().starts_with(L"Failed to load "); }));
    ReadAgain(kBreaking);
    ASSERT_TRUE(WaitUntil([&] {
        return app_->Total() == L"600" && (app_->Loaded() == L"600" || !app_->Status().empty());
    }));
    ReadAgain(kSystem);
    ASSERT_TRUE(WaitUntil([&] { return app_->Total() == L"60" && IsLoaded(60, 60); }));
    ReadAgain(kLarge);
    ASSERT_TRUE(WaitUntil([&] {
        return app_->Total() == FormatCount(kLargeEvents) && IsLoaded(kLargeEvents, 10'000);
    }));
    ExpectThePrefixOfLarge();
    ReadAgain(kApplication);
    const int all = static_cast<int>(application_.size());
    ASSERT_TRUE(WaitUntil([&] { return app_->Total() == FormatCount(all) && IsLoaded(all, all); }));
}

std::size_t Soak::HighWater() {
    Unfilter();
    ReadAgain(kLarge);
    EXPECT_TRUE(Filters(L"synthetic"));
    EXPECT_TRUE(WaitUntil([&] { return app_->list().RowCount() == kLargeEvents; }, 60s));
    EXPECT_TRUE(Filters(L""));
    return PrivateBytes(app_->process().handle());
}

void Soak::ExpectTheRowsOfApplication() {
    const auto offset = OffsetsOfThisZone(TimeOf(application_.front())).shown;
    ASSERT_EQ(app_->list().RowCount(), static_cast<int>(application_.size()));
    int row = 0;
    for (auto event = application_.rbegin(); event != application_.rend(); ++event, ++row) {
        ASSERT_EQ(app_->list().Row(row), ExpectedCells(*event, offset)) << row;
    }
}

void Soak::ExpectThePrefixOfLarge() {
    for (int row = 0; row < 10'000; row += 97) {
        ASSERT_EQ(app_->list().Cell(row, 5), std::to_wstring(kLargeEvents - row));
    }
}

TEST_F(Soak, LeaksNothingAndShowsTheRightRows) {
    const unsigned actions = NumberFromEnvironment(L"TAVRIN_SOAK_ACTIONS", kUsualActions);
    for (unsigned action = 0; action < kWarmUpActions && !HasFatalFailure(); ++action) {
        DoSomething();
    }
    ASSERT_NO_FATAL_FAILURE(ComeToRest());
    const Holdings first = HoldingsOf(*app_);
    std::vector<std::size_t> waters;
    for (unsigned quarter = 0; quarter < kQuarters; ++quarter) {
        for (unsigned action = 0; action < actions / kQuarters; ++action) {
            DoSomething();
            ASSERT_FALSE(HasFatalFailure()) << "action " << action << " of quarter " << quarter;
        }
        waters.push_back(HighWater());
        std::printf("high water %zu KiB\n", waters.back() / 1024);
        ASSERT_NO_FATAL_FAILURE(ComeToRest());
        HoldingsOf(*app_);
    }
    EXPECT_TRUE(HoldsNoMoreThan(*app_, first, kFirstUse));
    EXPECT_LE(waters.back(), waters[1] + kPlateau);
    ASSERT_NO_FATAL_FAILURE(ExpectTheRowsOfApplication());

    const ULONGLONG closing = GetTickCount64();
    app_->PostClose();
    EXPECT_TRUE(HasEndedCleanly(*app_, kEndLimit));
    std::printf("closing took %llu ms\n", GetTickCount64() - closing);
}

}  // namespace
}  // namespace tavrin::test
