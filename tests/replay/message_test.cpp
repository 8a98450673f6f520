#include "event_log.h"
#include "test_recording.h"

namespace {

using namespace replay_test;

class Messages : public ReplayTest {
protected:
    // Returns the event of Alpha with this record id.
    static Handle Event(int recordId) {
        return NextEvent(Query(
            L"Alpha", (L"*[System[EventRecordID=" + std::to_wstring(recordId) + L"]]").c_str()));
    }
};

Handle Publisher(const wchar_t* name) {
    return Handle(::EvtOpenPublisherMetadata(nullptr, name, nullptr, 0, 0));
}

struct Message {
    std::wstring text;
    DWORD error = ERROR_SUCCESS;
};

Message Format(const Handle& publisher, const Handle& event, DWORD flags = EvtFormatMessageEvent) {
    DWORD used = 0;
    if (!::EvtFormatMessage(publisher.get(), event.get(), 0, 0, nullptr, flags, 0, nullptr,
                            &used) &&
        ::GetLastError() != ERROR_INSUFFICIENT_BUFFER)
        return {{}, ::GetLastError()};
    std::wstring text(used, L'?');
    if (!::EvtFormatMessage(publisher.get(), event.get(), 0, 0, nullptr, flags, used, text.data(),
                            &used))
        return {{}, ::GetLastError()};
    text.pop_back();
    return {text};
}

TEST_F(Messages, APublisherWithoutAnyMessageIsNotRegistered) {
    EXPECT_TRUE(Publisher(L"Alder"));
    EXPECT_TRUE(Publisher(L"Birch & Co"));
    EXPECT_FALSE(Publisher(L"Cedar"));
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_FILE_NOT_FOUND});
}

TEST_F(Messages, TheMessageIsTheRecordedOne) {
    EXPECT_EQ(Format(Publisher(L"Alder"), Event(1)).text, L"one");
    EXPECT_EQ(Format(Publisher(L"Birch & Co"), Event(2)).text, L"two");
}

TEST_F(Messages, EntitiesAreDecodedAndLineEndsKept) {
    ServeAlpha({{.provider = L"Alder", .message = L"a < b &\r\nc\nd\x200E"}});
    EXPECT_EQ(Format(Publisher(L"Alder"), Event(1)).text, L"a < b &\r\nc\nd\x200E");
}

TEST_F(Messages, AnEventWithoutAMessageIs15027) {
    EXPECT_EQ(Format(Publisher(L"Alder"), Event(4)).error, DWORD{ERROR_EVT_MESSAGE_NOT_FOUND});
}

TEST_F(Messages, AnotherPublishersEventIs15027) {
    EXPECT_EQ(Format(Publisher(L"Alder"), Event(2)).error, DWORD{ERROR_EVT_MESSAGE_NOT_FOUND});
}

TEST_F(Messages, WithoutAPublisherOnlyForwardedEventsHaveOne) {
    const RecordedEvent forwarded{.recordId = 2, .message = L"forwarded"};
    ServeAlpha("<Events>" + Xml({.recordId = 1, .message = L"local"}) +
               tavrin::test::EventXml(L"Elsewhere", forwarded) + "</Events>");
    EXPECT_EQ(Format(Handle(), Event(1)).error, DWORD{ERROR_EVT_MESSAGE_NOT_FOUND});
    EXPECT_EQ(Format(Handle(), Event(2)).text, L"forwarded");
}

TEST_F(Messages, RenderingInfoBeyondTheMessageMarksAForwardedEvent) {
    const std::string xml = Xml({.recordId = 1, .message = L"carried"});
    const std::size_t at = xml.find("<Message>");
    ServeAlpha("<Events>" + xml.substr(0, at) +
               "<Level>Stufe</Level><Keywords><Keyword>k1</Keyword>"
               "<Keyword>k2</Keyword></Keywords>" +
               xml.substr(at) + "</Events>");
    EXPECT_EQ(Format(Handle(), Event(1)).text, L"carried");
    EXPECT_EQ(Format(Handle(), Event(1), EvtFormatMessageLevel).text, L"Stufe");
    EXPECT_EQ(Format(Handle(), Event(1), EvtFormatMessageKeyword).text,
              std::wstring(L"k1\0k2\0", 6));
}

TEST_F(Messages, LevelsHaveTheirOwnNames) {
    EXPECT_EQ(Format(Publisher(L"Birch & Co"), Event(2), EvtFormatMessageLevel).text, L"Error");
}

TEST_F(Messages, SizesCountCharactersWithTheTerminator) {
    const Handle publisher = Publisher(L"Alder");
    const Handle event = Event(1);
    wchar_t buffer[8];
    DWORD used = 0;
    EXPECT_FALSE(::EvtFormatMessage(publisher.get(), event.get(), 0, 0, nullptr,
                                    EvtFormatMessageEvent, 3, buffer, &used));
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_INSUFFICIENT_BUFFER});
    EXPECT_EQ(used, DWORD{4});
    EXPECT_TRUE(::EvtFormatMessage(publisher.get(), event.get(), 0, 0, nullptr,
                                   EvtFormatMessageEvent, 4, buffer, &used));
    EXPECT_STREQ(buffer, L"one");
}

TEST_F(Messages, TheXmlHasTheRenderingInfo) {
    const std::string expected = Xml(AlphaEvents()[0]);
    EXPECT_EQ(Format(Publisher(L"Alder"), Event(1), EvtFormatMessageXml).text,
              std::wstring(expected.begin(), expected.end()));
}

}  // namespace
