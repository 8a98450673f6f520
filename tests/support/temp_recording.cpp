#include "support/temp_recording.h"

#include <atomic>
#include <filesystem>
#include <fstream>
#include <utility>

#include <windows.h>

namespace tavrin::test {
namespace {

namespace fs = std::filesystem;

// Apart from those of other processes and of earlier objects of this one.
fs::path MakeDirectory() {
    static std::atomic<int> made;
    const fs::path path =
        fs::temp_directory_path() / (L"tavrin-recording-" + std::to_wstring(GetCurrentProcessId()) +
                                     L"-" + std::to_wstring(++made));
    fs::create_directories(path);
    return path;
}

// A channel's file is named by its path, in which "/" is written as "%4".
std::string FileName(const std::string& channel) {
    std::string name = channel;
    for (std::size_t at = name.find('/'); at != std::string::npos; at = name.find('/', at)) {
        name.replace(at, 1, "%4");
    }
    return name + ".xml";
}

bool WriteFile(const fs::path& path, const std::string& text) {
    std::ofstream file(path, std::ios::binary);
    file << text;
    return file.good();
}

std::string ChannelXml(const RecordedChannel& channel) {
    return "<channel name=\"" + channel.name + "\" type=\"" + channel.type +
           "\" owningPublisher=\"" + channel.publisher + "\" enabled=\"true\" " + channel.more +
           "/>\n";
}

}  // namespace

TempRecording::TempRecording() : directory_(MakeDirectory().wstring()) {}

TempRecording::~TempRecording() {
    std::error_code ignored;
    fs::remove_all(directory_, ignored);
}

void TempRecording::AddChannel(RecordedChannel channel) {
    channels_.push_back(std::move(channel));
}

void TempRecording::AddEvent(const std::string& channel, const RecordedEvent& event) {
    events_[channel] += EventXml(channel, event) + "\r\n";
}

void TempRecording::AddEvents(const std::string& channel, int count) {
    for (int i = 1; i <= count; ++i) {
        AddEvent(channel, {.recordId = static_cast<std::uint64_t>(i)});
    }
}

bool TempRecording::Write() const {
    std::string list = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<channels>\n";
    for (const RecordedChannel& channel : channels_) {
        list += ChannelXml(channel);
    }
    bool written = WriteFile(fs::path(directory_) / L"channels.xml", list + "</channels>\n");
    for (const auto& [channel, events] : events_) {
        written = written && WriteFile(fs::path(directory_) / FileName(channel),
                                       "<Events>\r\n" + events + "</Events>\r\n");
    }
    return written;
}

std::string EventXml(const std::string& channel, const RecordedEvent& event) {
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
           std::to_string(event.recordId) + "</EventRecordID><Correlation/><Execution ProcessID='" +
           event.processId + "' ThreadID='8'/><Channel>" + channel +
           "</Channel><Computer>TESTER</Computer><Security/></System>" + event.data + message +
           "</Event>";
}

}  // namespace tavrin::test
