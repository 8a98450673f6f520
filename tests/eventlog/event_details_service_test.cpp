#include "eventlog/details/event_details.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string>
#include <vector>

#include <windows.h>
#include <winevt.h>

#include <gtest/gtest.h>

#include "eventlog/details/event_data_text.h"
#include "replay/replay_control.h"
#include "support/fresh_thread.h"
#include "support/import_patch.h"
#include "support/trace_capture.h"

#include "service_fixture.h"

namespace tavrin::eventlog {
namespace {

using Lines = std::vector<std::wstring>;

const std::wstring kEventGone =
    L"This event is no longer in the log (it may have been overwritten or the log was "
    L"cleared).\r\nPress F5 to refresh.";

std::wstring Fallback(const std::wstring& eventId, const std::wstring& provider,
                      const std::wstring& values) {
    return L"The description for Event ID " + eventId + L" from source " + provider +
           L" cannot be found. Either the component that raises this event is not installed on "
           L"your local computer or the installation is corrupted.You can install or repair the "
           L"component on the local computer.\n\nIf the event originated on another computer, the "
           L"display information had to be saved with the event.\n\nThe following information was "
           L"included with the event:\n\n" +
           values +
           L"\n\nThe message resource is present but the message was not found in the message "
           L"table\n";
}

// Events 1 and 3 have a message. Event 2 has none, and the provider of event 4 is not registered.
class EventDetailsTest : public ServiceTest {
protected:
    EventDetailsTest() {
        const std::wstring data =
            L"<EventData><Data Name='a'>x</Data><Data Name='b'>y</Data></EventData>";
        recording_.AddChannel({.name = L"System"});
        recording_.WriteEvents(
            L"System", {{.recordId = 1, .provider = L"Acme-Test", .data = data, .message = L"One."},
                        {.recordId = 2,
                         .provider = L"Acme-Test",
                         .eventId = 4625,
                         .data = data,
                         .message = {}},
                        {.recordId = 3,
                         .provider = L"Acme-Test",
                         .data = L"<EventData/>",
                         .message = L"Three.\r\nAnd more."},
                        {.recordId = 4, .provider = L"Acme-Unknown", .data = data, .message = {}}});
    }

    // Opens the event on a fresh thread, which has no render context yet.
    std::uint32_t Open(std::uint64_t recordId) { return Open(L"System", recordId); }

    std::uint32_t Open(const std::wstring& path, std::uint64_t recordId) {
        std::uint32_t code = 99;
        test::OnFreshThread([&] {
            UniqueEvt event;
            code = OpenEventByRecordId(path, recordId, event);
            opened_ = static_cast<bool>(event);
        });
        return code;
    }

    std::uint32_t Describe(std::uint64_t recordId, const std::wstring& provider = L"Acme-Test") {
        text_ = L"as it was";
        std::uint32_t code = 99;
        test::OnFreshThread(
            [&] { code = FormatEventDescription(L"System", recordId, 4625, provider, text_); });
        return code;
    }

    bool opened_ = false;
    std::wstring text_;
    test::TraceCapture trace_;
};

TEST_F(EventDetailsTest, OpensAnEventByAStrictBookmark) {
    Serve();

    EXPECT_EQ(Open(2), 0u);

    EXPECT_TRUE(opened_);
    EXPECT_EQ(TakeCalls(),
              (Lines{
                  L"EvtCreateBookmark(BookmarkXml=\"<BookmarkList><Bookmark Channel='System' "
                  L"RecordId='2' IsCurrent='true'/></BookmarkList>\")",
                  L"EvtQuery(Session=NULL, Path=\"System\", Query=\"*\", Flags=0x1)",
                  L"EvtSeek(ResultSet=#2, Position=0, Bookmark=#1, Timeout=0, Flags=0x10004)",
                  L"EvtNext(ResultSet=#2, EventArraySize=1, EventArray=set, Timeout=INFINITE, "
                  L"Flags=0x0)",
                  L"EvtCreateRenderContext(ValuePathsCount=0, ValuePaths=NULL, Flags=0x1)",
                  L"EvtRender(Context=#3, Fragment=#4, Flags=0x0, BufferSize=4096, Buffer=set)",
                  L"EvtClose(Object=#2)",
                  L"EvtClose(Object=#1)",
                  L"EvtClose(Object=#4)",
                  L"EvtClose(Object=#3)",
              }));
}

TEST_F(EventDetailsTest, EscapesTheChannelsPathInTheBookmark) {
    Serve();

    EXPECT_NE(Open(L"O'Hara & <\"Sons\">", 18446744073709551615u), 0u);

    EXPECT_EQ(TakeCallsOf(L"EvtCreateBookmark"),
              Lines{L"EvtCreateBookmark(BookmarkXml=\"<BookmarkList><Bookmark Channel='O&apos;Hara "
                    L"&amp; &lt;&quot;Sons&quot;&gt;' RecordId='18446744073709551615' "
                    L"IsCurrent='true'/></BookmarkList>\")"});
}

TEST_F(EventDetailsTest, ReplacesTheEventInTheSlot) {
    Serve();
    test::OnFreshThread([] {
        UniqueEvt event;
        EXPECT_EQ(OpenEventByRecordId(L"System", 1, event), 0u);
        const EVT_HANDLE first = event.get();
        EXPECT_EQ(OpenEventByRecordId(L"System", 2, event), 0u);
        EXPECT_NE(event.get(), first);
        EXPECT_EQ(replay::OpenHandles(L"Event"), 1u);
    });
}

TEST_F(EventDetailsTest, AFailureLeavesTheSlotAlone) {
    Serve();
    test::OnFreshThread([] {
        UniqueEvt event;
        EXPECT_EQ(OpenEventByRecordId(L"System", 1, event), 0u);
        const EVT_HANDLE first = event.get();
        EXPECT_NE(OpenEventByRecordId(L"System", 77, event), 0u);
        EXPECT_EQ(event.get(), first);
    });
}

TEST_F(EventDetailsTest, AFailedCallGivesItsCode) {
    const struct {
        const wchar_t* script;
        std::uint32_t code;
    } cases[] = {
        {L"fail EvtCreateBookmark code=15008", 15008},
        {L"fail EvtQuery code=5", 5},
        {L"fail EvtSeek code=1722", 1722},
        {L"fail EvtSeek code=1168", 1168},
        {L"fail EvtNext code=259", 1168},  // any failure of EvtNext means that the event is gone
        {L"fail EvtNext code=1722", 1168},
        {L"fail EvtCreateRenderContext code=8", 8},
        {L"fail EvtRender code=1722", 1722},
        {L"fail EvtRender code=122 call=1\nfail EvtRender code=5 call=2", 5},
        // A failure without a code is still a failure.
        {L"fail EvtCreateBookmark code=0", 1359},
        {L"fail EvtQuery code=0", 1359},
        {L"fail EvtSeek code=0", 1359},
        {L"fail EvtCreateRenderContext code=0", 1359},
        {L"fail EvtRender code=0", 1359},
        {L"fail EvtRender code=122 call=1\nfail EvtRender code=0 call=2", 1359},
    };
    Serve();
    for (const auto& [script, code] : cases) {
        Script(script);
        EXPECT_EQ(Open(2), code) << testing::PrintToString(std::wstring(script));
        EXPECT_FALSE(opened_);
        EXPECT_EQ(replay::OpenHandles(), 0u);
    }
    EXPECT_TRUE(trace_.Calls().empty());
}

BOOL WINAPI NextWithoutEvents(EVT_HANDLE, DWORD, EVT_HANDLE*, DWORD, DWORD, PDWORD returned) {
    *returned = 0;
    return TRUE;
}

TEST_F(EventDetailsTest, AnEmptyPageMeansThatTheEventIsGone) {
    Serve();
    const test::ImportPatch<decltype(EvtNext)> patch("EvtNext", NextWithoutEvents);

    EXPECT_EQ(Open(2), 1168u);
}

TEST_F(EventDetailsTest, GrowsTheBufferToTheReportedSizeForEachEventAnew) {
    Serve();
    Script(L"pad EvtRender bytes=5000");
    test::OnFreshThread([] {
        UniqueEvt event;
        EXPECT_EQ(OpenEventByRecordId(L"System", 1, event), 0u);
        EXPECT_EQ(OpenEventByRecordId(L"System", 2, event), 0u);
    });

    const Lines renders = TakeCallsOf(L"EvtRender");
    ASSERT_EQ(renders.size(), 4u);
    EXPECT_NE(renders[0].find(L"BufferSize=4096,"), std::wstring::npos);
    EXPECT_EQ(renders[1].find(L"BufferSize=4096,"), std::wstring::npos);
    EXPECT_NE(renders[2].find(L"BufferSize=4096,"), std::wstring::npos);
    EXPECT_EQ(replay::CallsOf(L"EvtCreateRenderContext"), 1u);
}

TEST_F(EventDetailsTest, WithoutAContextEveryOpenOfTheThreadFailsWithItsCode) {
    Serve();
    Script(L"fail EvtCreateRenderContext code=8 call=1");
    test::OnFreshThread([] {
        UniqueEvt event;
        EXPECT_EQ(OpenEventByRecordId(L"System", 1, event), 8u);
        SetLastError(77);
        EXPECT_EQ(OpenEventByRecordId(L"System", 2, event), 8u);
    });
    EXPECT_EQ(replay::CallsOf(L"EvtCreateRenderContext"), 1u);
}

TEST_F(EventDetailsTest, AnEventWithAnotherRecordIdIsTracedAndReportedAsGone) {
    Serve();
    Script(L"record-id EvtRender add=40");

    EXPECT_EQ(Open(2), 1168u);

    EXPECT_FALSE(opened_);
    EXPECT_EQ(trace_.WideMessages(), Lines{L"OpenEventByRecordId: wanted 2 got 42"});
}

TEST_F(EventDetailsTest, AsksThePublisherForTheSizeAndThenForTheMessage) {
    Serve();
    EXPECT_EQ(Describe(1), 0u);

    EXPECT_EQ(text_, L"One.");
    Lines calls = TakeCalls();
    const auto publisher = std::ranges::find_if(calls, [](const std::wstring& call) {
        return call.starts_with(L"EvtOpenPublisherMetadata");
    });
    EXPECT_EQ(
        Lines(publisher, calls.end()),
        (Lines{
            L"EvtOpenPublisherMetadata(Session=NULL, PublisherId=\"Acme-Test\", LogFilePath=NULL, "
            L"Locale=0, Flags=0x0)",
            L"EvtFormatMessage(PublisherMetadata=#5, Event=#4, MessageId=0, ValueCount=0, "
            L"Values=NULL, Flags=0x1, BufferSize=0, Buffer=NULL)",
            L"EvtFormatMessage(PublisherMetadata=#5, Event=#4, MessageId=0, ValueCount=0, "
            L"Values=NULL, Flags=0x1, BufferSize=5, Buffer=set)",
            L"EvtClose(Object=#5)",
            L"EvtClose(Object=#4)",
            L"EvtClose(Object=#3)",
        }));
}

TEST_F(EventDetailsTest, GivesTheMessageWithItsLineBreaks) {
    Serve();

    EXPECT_EQ(Describe(3), 0u);

    EXPECT_EQ(text_, L"Three.\r\nAnd more.");
}

TEST_F(EventDetailsTest, AMissingEventIsReportedAsGone) {
    Serve();

    EXPECT_EQ(Describe(77), 1168u);

    EXPECT_EQ(text_, kEventGone);
    EXPECT_EQ(replay::CallsOf(L"EvtOpenPublisherMetadata"), 0u);
}

TEST_F(EventDetailsTest, AnotherFailureToOpenLeavesTheTextAlone) {
    Serve();
    for (const wchar_t* function :
         {L"EvtCreateBookmark", L"EvtQuery", L"EvtSeek", L"EvtCreateRenderContext", L"EvtRender"}) {
        Script(std::wstring(L"fail ") + function + L" code=1722");

        EXPECT_EQ(Describe(1), 1722u);
        EXPECT_EQ(text_, L"as it was");
    }
}

TEST_F(EventDetailsTest, AProviderThatIsNotRegisteredGivesTheFallback) {
    Serve();

    EXPECT_EQ(Describe(4, L"Acme-Unknown"), 2u);

    EXPECT_EQ(text_, Fallback(L"4625", L"Acme-Unknown", L"x\ny\n"));
}

TEST_F(EventDetailsTest, AMissingMessageGivesTheFallback) {
    Serve();

    EXPECT_EQ(Describe(2), 15027u);

    EXPECT_EQ(text_, Fallback(L"4625", L"Acme-Test", L"x\ny\n"));
}

TEST_F(EventDetailsTest, AnEventWithoutDataHasAFallbackWithoutValues) {
    Serve();
    Script(L"fail EvtOpenPublisherMetadata code=2");

    EXPECT_EQ(Describe(3), 2u);

    EXPECT_EQ(text_, Fallback(L"4625", L"Acme-Test", L""));
}

TEST_F(EventDetailsTest, OtherFailuresOfTheMessageLeaveTheTextAlone) {
    const struct {
        const wchar_t* script;
        std::uint32_t code;
    } cases[] = {
        {L"fail EvtOpenPublisherMetadata code=15002", 15002},
        {L"fail EvtOpenPublisherMetadata code=5", 5},
        {L"fail EvtOpenPublisherMetadata code=15027", 15027},
        {L"fail EvtFormatMessage code=15028 call=1", 15028},
        {L"fail EvtFormatMessage code=2 call=1", 2},
        {L"fail EvtFormatMessage code=1722 from=2", 1722},
        {L"fail EvtFormatMessage code=15027 from=2", 15027},
        {L"fail EvtOpenPublisherMetadata code=0", 1359},
        {L"fail EvtFormatMessage code=0 call=1", 1359},
        {L"fail EvtFormatMessage code=0 from=2", 1359},
    };
    Serve();
    for (const auto& [script, code] : cases) {
        Script(script);

        EXPECT_EQ(Describe(1), code) << testing::PrintToString(std::wstring(script));
        EXPECT_EQ(text_, L"as it was");
        EXPECT_EQ(replay::OpenHandles(), 0u);
    }
}

TEST_F(EventDetailsTest, AFailedMessageIsTriedOnceMoreWithoutThePublisher) {
    Serve();
    Script(L"fail EvtFormatMessage code=1722 call=2\nfail EvtFormatMessage code=15028 call=3");

    EXPECT_EQ(Describe(1), 15028u);  // the code of the last call

    const Lines calls = TakeCallsOf(L"EvtFormatMessage");
    ASSERT_EQ(calls.size(), 3u);
    EXPECT_TRUE(calls[1].starts_with(L"EvtFormatMessage(PublisherMetadata=#5, Event=#4"));
    EXPECT_EQ(calls[2],
              L"EvtFormatMessage(PublisherMetadata=NULL, Event=#4, MessageId=0, "
              L"ValueCount=0, Values=NULL, Flags=0x1, BufferSize=5, Buffer=set)");
}

// What the patched EvtFormatMessage does and what it saw.
struct FormatAnswer {
    bool succeedsWithoutBuffer = false;
    bool failsWithPublisher = false;
    std::wstring message;
    bool bufferWasZero = true;
};
FormatAnswer g_format;

BOOL WINAPI FormatMessageByTest(EVT_HANDLE publisher, EVT_HANDLE, DWORD, DWORD, PEVT_VARIANT, DWORD,
                                DWORD size, LPWSTR buffer, PDWORD used) {
    *used = static_cast<DWORD>(g_format.message.size());
    if (g_format.succeedsWithoutBuffer) {
        return TRUE;
    }
    if (size == 0) {
        SetLastError(ERROR_INSUFFICIENT_BUFFER);
        return FALSE;
    }
    if (publisher != nullptr && g_format.failsWithPublisher) {
        SetLastError(15029);
        return FALSE;
    }
    g_format.bufferWasZero = std::all_of(buffer, buffer + size, [](wchar_t c) { return c == 0; });
    std::ranges::copy(g_format.message, buffer);
    return TRUE;
}

class FormattedMessage : public EventDetailsTest {
protected:
    FormattedMessage() { g_format = FormatAnswer(); }

    std::wstring DescribeAs(std::wstring message) {
        g_format.message = std::move(message);
        EXPECT_EQ(Describe(1), 0u);
        EXPECT_TRUE(g_format.bufferWasZero);
        return text_;
    }

private:
    test::ImportPatch<decltype(EvtFormatMessage)> patch_{"EvtFormatMessage", FormatMessageByTest};
};

TEST_F(FormattedMessage, LosesTrailingZerosAndKeepsInnerOnes) {
    Serve();

    EXPECT_EQ(DescribeAs(std::wstring(L"Text\0", 5)), L"Text");
    EXPECT_EQ(DescribeAs(std::wstring(L"Text\0\0\0", 7)), L"Text");
    EXPECT_EQ(DescribeAs(std::wstring(L"A\0B\0", 4)), std::wstring(L"A\0B", 3));
    EXPECT_EQ(DescribeAs(L"No zero"), L"No zero");
    EXPECT_EQ(DescribeAs(std::wstring(L"\0\0", 2)), L"");
}

TEST_F(FormattedMessage, MayComeFromTheEventItself) {
    Serve();
    g_format.failsWithPublisher = true;

    EXPECT_EQ(DescribeAs(std::wstring(L"Brought along.\0", 15)), L"Brought along.");
}

TEST_F(FormattedMessage, ThatTheServiceOmitsLeavesTheTextAlone) {
    Serve();
    g_format.succeedsWithoutBuffer = true;

    EXPECT_EQ(DescribeAs(L""), L"as it was");
}

class FormatEventDataTest : public EventDetailsTest {
protected:
    // Returns the formatted data of a new event with this XML.
    std::wstring DataOf(const std::wstring& xml) {
        recording_.WriteEvents(L"System", {{.recordId = 50, .data = xml}});
        Serve();
        return DataOf(50);
    }

    std::wstring DataOf(std::uint64_t recordId) {
        std::wstring data;
        test::OnFreshThread([&] {
            UniqueEvt event;
            EXPECT_EQ(OpenEventByRecordId(L"System", recordId, event), 0u);
            replay::StartCallLog();
            data = FormatEventData(event.get());
            calls_ = TakeCallsOf(L"EvtRender");
        });
        return data;
    }

    Lines calls_;
};

TEST_F(FormatEventDataTest, RendersTheXmlOnceForItsSizeAndOnceForItsText) {
    Serve();

    EXPECT_EQ(DataOf(1), L"x\ny\n");

    ASSERT_EQ(calls_.size(), 2u);
    EXPECT_EQ(calls_[0],
              L"EvtRender(Context=NULL, Fragment=#1, Flags=0x1, BufferSize=0, Buffer=NULL)");
    EXPECT_TRUE(calls_[1].starts_with(L"EvtRender(Context=NULL, Fragment=#1, Flags=0x1, "));
    EXPECT_TRUE(calls_[1].ends_with(L"Buffer=set)"));
}

TEST_F(FormatEventDataTest, GivesTheEventDataAndThenTheUserData) {
    EXPECT_EQ(DataOf(L"<UserData><Data>u</Data></UserData><EventData><Data>e</Data></EventData>"),
              L"e\nu\n");
}

TEST_F(FormatEventDataTest, IsEmptyWhereTheOpenTagHasAttributes) {
    EXPECT_EQ(DataOf(L"<EventData Name='X'><Data>e</Data></EventData>"), L"");
}

TEST_F(FormatEventDataTest, KeepsALongValueWhole) {
    const std::wstring value(10'000, L'v');

    EXPECT_EQ(DataOf(L"<EventData><Data>" + value + L"</Data></EventData>"), value + L"\n");
}

TEST_F(FormatEventDataTest, IsEmptyWhereTheXmlCannotBeRendered) {
    Serve();
    // Call 1 of each run renders the system values to check the record id.
    for (const wchar_t* script :
         {L"fail EvtRender code=1722 call=2", L"fail EvtRender code=1722 call=3",
          L"fail EvtRender code=122 call=3"}) {
        Script(script);
        EXPECT_EQ(DataOf(1), L"") << testing::PrintToString(std::wstring(script));
    }
}

// The XML and byte count that the patched EvtRender returns, and the buffer size that it got.
std::wstring g_xml;
DWORD g_reported = 0;
DWORD g_offered = 0;

BOOL WINAPI RenderXmlByTest(EVT_HANDLE, EVT_HANDLE, DWORD, DWORD size, PVOID buffer, PDWORD used,
                            PDWORD) {
    *used = g_reported;
    if (size == 0) {
        SetLastError(ERROR_INSUFFICIENT_BUFFER);
        return FALSE;
    }
    g_offered = size;
    std::ranges::copy(g_xml, static_cast<wchar_t*>(buffer));
    return TRUE;
}

TEST(FormatEventData, OffersAnEvenNumberOfBytesAndReadsToTheFirstZero) {
    const test::ImportPatch<decltype(EvtRender)> patch("EvtRender", RenderXmlByTest);
    g_xml = std::wstring(
        L"<EventData><Data>a</Data></EventData>\0"
        L"<UserData><Data>b</Data></UserData>",
        73);
    g_reported = static_cast<DWORD>(g_xml.size() * sizeof(wchar_t)) + 1;

    EXPECT_EQ(FormatEventData(nullptr), L"a\n");

    EXPECT_EQ(g_offered, g_reported - 1);
}

}  // namespace
}  // namespace tavrin::eventlog
