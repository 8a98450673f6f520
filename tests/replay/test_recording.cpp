#include "test_recording.h"

#include "support/temp_folder.h"

namespace replay_test {

std::string Xml(const RecordedEvent& event) {
    return tavrin::test::EventXml(L"Alpha", event);
}

std::vector<RecordedEvent> AlphaEvents() {
    return {
        {.recordId = 1,
         .provider = L"Alder",
         .eventId = 10,
         .time = L"2024-03-01T08:00:00.0000000Z",
         .message = L"one"},
        {.recordId = 2,
         .provider = L"Birch & Co",
         .eventId = 20,
         .level = 2,
         .time = L"2024-03-01T08:00:01.5000000Z",
         .message = L"two"},
        {.recordId = 4,
         .provider = L"Alder",
         .eventId = 30,
         .level = 3,
         .time = L"2024-03-01T08:00:02.0000000Z",
         .message = {}},
        {.recordId = 7,
         .provider = L"Cedar",
         .eventId = 10,
         .level = 0,
         .keywords = 0x8020000000000000,
         .time = L"2024-03-01T09:00:00.0000000Z",
         .message = {}},
    };
}

void ReplayTest::SetUp() {
    replay::Reset();
    recording.WriteEvents(L"Alpha", AlphaEvents());
    recording.WriteEvents(L"Quiet/Debug", {{}});
    Serve();
}

void ReplayTest::TearDown() {
    EXPECT_EQ(replay::DescribeOpenHandles(), std::vector<std::wstring>());
    replay::LoadEmbedded();  // releases the files
}

void ReplayTest::ServeAlpha(const std::vector<RecordedEvent>& events) const {
    ServeAlpha(tavrin::test::EventsXml(L"Alpha", events));
}

void ReplayTest::ServeAlpha(std::string_view bytes) const {
    tavrin::test::WriteFile(recording.FileOf(L"Alpha"), bytes);
    Serve();
}

void ReplayTest::ServeChannels(std::string_view elements) const {
    tavrin::test::WriteFile(recording.folder() / L"channels.xml",
                            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<channels>" +
                                std::string(elements) + "</channels>");
    Serve();
}

}  // namespace replay_test
