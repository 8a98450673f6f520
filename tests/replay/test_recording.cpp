#include "test_recording.h"

#include <windows.h>

#include <fstream>
#include <system_error>

namespace replay_test {
namespace {

constexpr std::string_view kChannels =
    "<channel name='Alpha' type='Admin' owningPublisher='' enabled='true'/>"
    "<channel name='Beta/Operational' type='Operational' owningPublisher='Beta-Works' "
    "enabled='true'/>"
    "<channel name='Locked' type='Admin' owningPublisher='' enabled='true' access='denied'/>"
    "<channel name='Trace/Analytic' type='Analytic' owningPublisher='Beta-Works' enabled='true'/>"
    "<channel name='Quiet/Debug' type='Debug' owningPublisher='Beta-Works' enabled='false'/>";

std::filesystem::path NewDirectory() {
    static int number = 0;
    return std::filesystem::temp_directory_path() /
           ("replay_test_" + std::to_string(::GetCurrentProcessId()) + "_" +
            std::to_string(++number));
}

}  // namespace

std::string Xml(const RecordedEvent& event) {
    const std::string message = event.message.empty()
                                    ? ""
                                    : "<RenderingInfo Culture='en-US'><Message>" + event.message +
                                          "</Message></RenderingInfo>";
    return "<Event xmlns='http://schemas.microsoft.com/win/2004/08/events/event'><System>"
           "<Provider Name='" +
           event.provider + "'/><EventID>" + std::to_string(event.eventId) +
           "</EventID><Version>0</Version><Level>" + std::to_string(event.level) +
           "</Level><Task>0</Task><Opcode>0</Opcode><Keywords>" + event.keywords +
           "</Keywords><TimeCreated SystemTime='" + event.time + "'/><EventRecordID>" +
           std::to_string(event.recordId) +
           "</EventRecordID><Correlation/><Execution ProcessID='12' ThreadID='34'/><Channel>" +
           event.channel + "</Channel><Computer>HOST</Computer><Security/></System>" + event.data +
           message + "</Event>";
}

std::string EventsFile(const std::vector<RecordedEvent>& events) {
    std::string file = "<Events>\r\n";
    for (const RecordedEvent& event : events)
        file += Xml(event) + "\r\n";
    return file + "</Events>\r\n";
}

TestRecording::TestRecording() : directory_(NewDirectory()) {
    std::filesystem::create_directories(directory_);
}

TestRecording::~TestRecording() {
    std::error_code ignored;
    std::filesystem::remove_all(directory_, ignored);
}

void TestRecording::Write(std::string_view fileName, std::string_view bytes) const {
    std::ofstream(directory_ / fileName, std::ios::binary) << bytes;
}

void TestRecording::Append(std::string_view fileName, std::string_view bytes) const {
    std::ofstream(directory_ / fileName, std::ios::binary | std::ios::app) << bytes;
}

void TestRecording::WriteChannels(std::string_view elements) const {
    Write("channels.xml", "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<channels>" +
                              std::string(elements) + "</channels>");
}

std::vector<RecordedEvent> AlphaEvents() {
    return {
        {.recordId = 1,
         .provider = "Alder",
         .eventId = 10,
         .level = 4,
         .time = "2024-03-01T08:00:00.0000000Z",
         .message = "one"},
        {.recordId = 2,
         .provider = "Birch &amp; Co",
         .eventId = 20,
         .level = 2,
         .time = "2024-03-01T08:00:01.5000000Z",
         .message = "two"},
        {.recordId = 4,
         .provider = "Alder",
         .eventId = 30,
         .level = 3,
         .time = "2024-03-01T08:00:02.0000000Z"},
        {.recordId = 7,
         .provider = "Cedar",
         .eventId = 10,
         .level = 0,
         .keywords = "0x8020000000000000",
         .time = "2024-03-01T09:00:00.0000000Z"},
    };
}

void ReplayTest::SetUp() {
    replay::Reset();
    recording.WriteChannels(kChannels);
    recording.Write("Alpha.xml", EventsFile(AlphaEvents()));
    recording.Write("Quiet%4Debug.xml", EventsFile({{.channel = "Quiet/Debug"}}));
    recording.Load();
}

void ReplayTest::TearDown() {
    EXPECT_EQ(replay::DescribeOpenHandles(), std::vector<std::wstring>());
    replay::LoadEmbedded();  // lets go of the files
}

}  // namespace replay_test
