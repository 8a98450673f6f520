#include "event_log.h"
#include "support/temp_folder.h"
#include "test_recording.h"

namespace {

using namespace replay_test;
using tavrin::test::Events;
using tavrin::test::EventsXml;
using Ids = std::vector<unsigned long long>;

// Captures standard error while it lives.
class ErrorOutput {
public:
    ErrorOutput() {
        ::CreatePipe(&read_, &write_, nullptr, 1 << 16);
        ::SetStdHandle(STD_ERROR_HANDLE, write_);
    }
    ~ErrorOutput() {
        ::SetStdHandle(STD_ERROR_HANDLE, former_);
        ::CloseHandle(read_);
        ::CloseHandle(write_);
    }
    std::string Text() const {
        DWORD available = 0;
        ::PeekNamedPipe(read_, nullptr, 0, nullptr, &available, nullptr);
        std::string text(available, '\0');
        DWORD read = 0;
        if (available > 0)
            ::ReadFile(read_, text.data(), available, &read, nullptr);
        return text;
    }

private:
    const HANDLE former_ = ::GetStdHandle(STD_ERROR_HANDLE);
    HANDLE read_ = nullptr;
    HANDLE write_ = nullptr;
};

class Damage : public ReplayTest {
protected:
    // Replaces Alpha's file and returns the notices that reading it writes to standard error.
    std::string ReadAlpha(const std::string& bytes) {
        replay::LoadEmbedded();  // releases the file, which cannot be replaced while it is served
        tavrin::test::WriteFile(recording.FileOf(L"Alpha"), bytes);
        Serve();
        const ErrorOutput output;
        ids = RecordIds(Query(L"Alpha"));
        return output.Text();
    }
    Ids ids;
};

struct DamageCase {
    const char* found;
    const char* replaced;
    const char* place;  // the notice's byte offset refers to this text
    const char* reason;
};

// Each case is applied to the second of three events.
constexpr DamageCase kDamages[] = {
    {"<Level>4</Level>", "<Level>4</Lever>", "</Lever>", "</Lever> where </Level> belongs"},
    {"<Channel>Alpha", "<Channel>Al&pha;", "&pha;", "unknown entity"},
    {"<Computer>TESTER", "<Computer>\xFFTESTER", "\xFF", "not UTF-8"},
    {"<EventData>", "<\xFF/><EventData>", "\xFF", "not UTF-8"},
    {"<EventData>", "<E \xFF='1'/><EventData>", "\xFF", "not UTF-8"},
    {"<EventData>", "<!-- \xFF --><EventData>", "\xFF", "not UTF-8"},
    {"<Provider Name='Alder'/>", "<Provider Name='Alder/>", "'Alder", "\"<\" in an attribute"},
    {"<Event xmlns", "<Evennt xmlns", "<Evennt", "<Evennt> where <Event> belongs"},
    {"<Security/>", "< />", "< />", "\"<\" without an element's name"},
};

TEST_F(Damage, TheNoticeNamesFileAndByteAndTheOtherEventsAreServed) {
    for (const DamageCase& damage : kDamages) {
        std::string file = "<Events>\r\n" + Xml({.recordId = 1}) + "\r\n";
        std::string second = Xml({.recordId = 2, .provider = L"Alder"});
        second.replace(second.find(damage.found), std::string(damage.found).size(),
                       damage.replaced);
        const std::size_t begin = file.size();
        file += second + "\r\n" + Xml({.recordId = 3}) + "\r\n</Events>\r\n";
        const std::string notice = ReadAlpha(file);
        std::size_t offset = file.find(damage.place, begin);
        if (std::string(damage.place) == "'Alder")  // the value continues to the next "<"
            offset = file.find('<', offset);
        EXPECT_NE(notice.find("Alpha.xml: byte " + std::to_string(offset) + ": " + damage.reason),
                  std::string::npos)
            << notice;
        EXPECT_EQ(ids, (Ids{1, 3})) << damage.reason;
    }
}

TEST_F(Damage, ALiteralBetweenEventsIsNoEvent) {
    const std::string first = "<Events>" + Xml({.recordId = 1});
    const std::string notice =
        ReadAlpha(first + "<![CDATA[text]]>" + Xml({.recordId = 2}) + "</Events>");
    EXPECT_NE(notice.find("byte " + std::to_string(first.size()) + ": text outside any element"),
              std::string::npos)
        << notice;
    EXPECT_EQ(ids, (Ids{1, 2}));
}

TEST_F(Damage, ACommentDoesNotEndInItsOpeningDelimiter) {
    for (const wchar_t* aside : {L"<!--><open>-->", L"<?><open>?>"}) {
        EXPECT_EQ(ReadAlpha(EventsXml(L"Alpha", {{.recordId = 1, .data = aside}})), "") << aside;
        EXPECT_EQ(ids, Ids{1}) << aside;
    }
}

TEST_F(Damage, ATruncatedFileIsServedUpToItsEnd) {
    const std::string file = EventsXml(L"Alpha", Events(2));
    const std::string notice = ReadAlpha(file.substr(0, file.rfind("TESTER") + 2));
    EXPECT_NE(notice.find("the text ends inside <Computer>"), std::string::npos) << notice;
    EXPECT_EQ(ids, Ids{1});
}

TEST_F(Damage, AMissingEndTagOfTheRootIsReported) {
    const std::string notice = ReadAlpha("<Events>" + Xml({.recordId = 1}));
    EXPECT_NE(notice.find("the file ends without </Events>"), std::string::npos) << notice;
    EXPECT_EQ(ids, Ids{1});
}

TEST_F(Damage, ACompleteFileWritesNoNotice) {
    EXPECT_EQ(ReadAlpha(EventsXml(L"Alpha", Events(1))), "");
    EXPECT_EQ(ReadAlpha(""), "");
}

TEST_F(Damage, TheOtherChannelsAreUnharmed) {
    ReadAlpha("<Events><Event></Events>");
    EXPECT_EQ(ids, Ids());
    EXPECT_EQ(RecordIds(Query(L"Quiet/Debug")), Ids{1});
}

TEST_F(Damage, ADamagedChannelListIsServedUpToTheDamage) {
    const ErrorOutput output;
    ServeChannels("<channel name='Alpha' type='Admin'/><channel name='B type='Admin'/>");
    EXPECT_NE(output.Text().find("channels.xml: byte "), std::string::npos);
    EXPECT_TRUE(Query(L"Alpha"));
    EXPECT_EQ(QueryError(L"Beta/Operational", L"*"), DWORD{ERROR_EVT_CHANNEL_NOT_FOUND});
}

TEST_F(Damage, AnUnknownChannelTypeIsReported) {
    const ErrorOutput output;
    ServeChannels("<channel name='Alpha' type='Strange'/>");
    EXPECT_NE(
        output.Text().find("channels.xml: byte 49: a channel without a name or of an unknown type"),
        std::string::npos);
}

TEST_F(Damage, WithoutAChannelListTheServiceIsNotRunning) {
    const ErrorOutput output;
    EXPECT_FALSE(replay::LoadDirectory((recording.folder() / L"none").wstring()));
    EXPECT_NE(output.Text().find("channels.xml: cannot be read"), std::string::npos);
    EXPECT_EQ(::EvtOpenChannelEnum(nullptr, 0), nullptr);
    EXPECT_EQ(::GetLastError(), DWORD{RPC_S_SERVER_UNAVAILABLE});
    EXPECT_EQ(QueryError(L"Alpha", L"*"), DWORD{RPC_S_SERVER_UNAVAILABLE});
}

}  // namespace
