#include "resource.h"
#include "support/wait_until.h"
#include "window/controls/input.h"
#include "window/expected/expected_texts.h"
#include "window/harness/service_script.h"
#include "window/harness/test_logs.h"
#include "window/harness/window_test.h"

namespace tavrin::test {
namespace {

class Details : public WindowTest {
protected:
    void StartWith(const std::vector<RecordedEvent>& events, const std::wstring& script = L"") {
        logs_.WriteEvents(L"Application", events);
        Start(Serving(logs_, script));
        ASSERT_TRUE(app_->SelectPath(kApplication));
        ASSERT_TRUE(app_->WaitForRows(static_cast<int>(events.size())));
    }

    void ExpectDetails(const std::wstring& text) const {
        EXPECT_TRUE(
            WaitUntil([&] { return app_->Details() == text; }, std::chrono::milliseconds(3000)))
            << app_->Details().substr(0, 400);
    }

    const Recording logs_{kSomeChannels};
};

TEST_F(Details, FollowTheKeyboard) {
    StartWith(EventsWithMessages(6));
    ASSERT_TRUE(BringToFront(app_->window()));
    ASSERT_TRUE(GiveFocus(app_->controls().list));
    PressKey(VK_HOME);
    PressKey(VK_SPACE);
    ExpectDetails(L"Message 6");
    PressKey(VK_DOWN);
    ExpectDetails(L"Message 5");
    PressKey(VK_DOWN);
    ExpectDetails(L"Message 4");
    PressKey(VK_END);
    ExpectDetails(L"Message 1");
    PressKey(VK_UP);
    ExpectDetails(L"Message 2");
}

TEST_F(Details, FollowTheMouse) {
    StartWith(EventsWithMessages(6));
    ASSERT_TRUE(BringToFront(app_->window()));
    for (const int row : {3, 0, 5}) {
        RECT cell = app_->list().RowRect(row, LVIR_BOUNDS);
        cell.right = cell.left + 100;
        ClickLeft(CentreOf(cell));
        ExpectDetails(L"Message " + std::to_wstring(6 - row));
    }
}

// The list keeps the channel's rows.
TEST_F(Details, AreOfTheRowsChannelWhileAFolderIsSelected) {
    StartWith(EventsWithMessages(6));
    ASSERT_TRUE(app_->SelectPath(kWindowsLogs));
    app_->list().Select(2);
    ExpectDetails(L"Message 4");
}

TEST_F(Details, ShowEachKindOfLineBreakAsOneLineBreak) {
    StartWith({{.recordId = 1, .message = L"a\r\nb\nc\n\nd"}});
    app_->list().Select(0);
    ExpectDetails(L"a\r\nb\r\nc\r\n\r\nd");
    EXPECT_EQ(SendMessageW(app_->controls().detailsEdit, EM_GETLINECOUNT, 0, 0), 5);
}

TEST_F(Details, WithoutAMessageListTheEventsData) {
    const std::wstring data =
        L"<EventData><Data Name='a'>x &amp; y</Data><Data Name='b'></Data><Data>z</Data>"
        L"</EventData>";
    StartWith(
        {{.recordId = 1, .provider = L"Known-Provider"},
         {.recordId = 2, .provider = L"Known-Provider", .data = data, .message = std::nullopt},
         {.recordId = 3, .provider = L"Unknown-Provider", .data = data, .message = std::nullopt}});
    app_->list().Select(0);
    ExpectDetails(FallbackDescription(1000, L"Unknown-Provider", L"x &amp; y\r\nz\r\n"));
    app_->list().Select(1);
    ExpectDetails(FallbackDescription(1000, L"Known-Provider", L"x &amp; y\r\nz\r\n"));
}

TEST_F(Details, SayThatAnEventIsNoLongerInTheLog) {
    StartWith(Events(3), FailCall(L"EvtNext", 259, L"Application", 4));
    app_->list().Select(1);
    ExpectDetails(kEventGoneText);
    app_->list().Select(2);
    ExpectDetails(L"A message.");
}

TEST_F(Details, OfARecordWithAnotherIdSayThatTheEventIsGone) {
    // The loader renders the first two events, so the changed ids start with the details.
    StartWith(Events(2), L"record-id EvtRender add=1 from=3\n");
    app_->list().Select(0);
    ExpectDetails(kEventGoneText);
}

TEST_F(Details, AreEmptyWhenAServiceCallFails) {
    StartWith(Events(3), FailCall(L"EvtCreateBookmark", 1722, L"", 2));
    app_->list().Select(0);
    ExpectDetails(L"A message.");
    app_->list().Select(1);
    ExpectDetails(L"");
    app_->list().Select(2);
    ExpectDetails(L"A message.");
}

TEST_F(Details, ShowElevenKilobytesAndTwoThousandLines) {
    std::wstring lines;
    for (int i = 1; i <= 2000; ++i) {
        lines += L"line " + std::to_wstring(i) + L"\r\n";
    }
    const std::wstring marks = L"\u200E\u05E9\u05DC\u05D5\u05DD\u200F end";
    StartWith({{.recordId = 1, .message = std::wstring(11264, L'm')},
               {.recordId = 2, .message = lines + L"last"},
               {.recordId = 3, .message = marks}});
    app_->list().Select(0);
    ExpectDetails(marks);
    app_->list().Select(1);
    ExpectDetails(lines + L"last");
    app_->list().Select(2);
    ExpectDetails(std::wstring(11264, L'm'));
}

TEST_F(Details, AreClearedAtTheStartOfALoad) {
    StartWith(Events(2));
    app_->list().Select(0);
    ExpectDetails(L"A message.");
    app_->Command(IDM_REFRESH);
    ExpectDetails(L"");
}

TEST_F(Details, StayWhenARowIsDeselected) {
    StartWith(Events(2));
    app_->list().Select(0);
    ExpectDetails(L"A message.");
    app_->list().Unselect();
    EXPECT_EQ(app_->Details(), L"A message.");
}

// Every key press must count. The benchmarks measure the time.
TEST_F(Details, FollowAHeldDownKeyToItsLastRow) {
    StartWith(EventsWithMessages(300));
    ASSERT_TRUE(BringToFront(app_->window()));
    ASSERT_TRUE(GiveFocus(app_->controls().list));
    PressKey(VK_HOME);
    for (int row = 0; row < 200; ++row) {
        PressKey(VK_DOWN);
    }
    EXPECT_TRUE(WaitUntil([&] { return app_->Details() == L"Message 100"; }, 4 * kPatience));
}

}  // namespace
}  // namespace tavrin::test
