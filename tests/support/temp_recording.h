#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace tavrin::test {

// One recorded event. Texts are UTF-8 and stand in the XML as they are here.
struct RecordedEvent {
    std::uint64_t recordId = 1;
    std::string provider = "Acme-Test";
    int eventId = 1;
    int level = 4;
    std::string keywords = "0x80000000000000";
    std::string time = "2024-03-05T07:09:03.1234567Z";
    std::string processId = "4711";
    std::string data = "<EventData></EventData>";
    std::string message = "";  // none when empty
};

// One recorded channel, with the attributes of the channel list.
struct RecordedChannel {
    std::string name;
    std::string type = "Admin";
    std::string publisher = "";
    std::string more = "";  // further attributes
};

// A recording in a directory of its own, which is gone when the object is.
class TempRecording {
public:
    TempRecording();
    ~TempRecording();
    TempRecording(const TempRecording&) = delete;
    TempRecording& operator=(const TempRecording&) = delete;

    void AddChannel(RecordedChannel channel);
    void AddEvent(const std::string& channel, const RecordedEvent& event);

    // Adds events with the record ids 1 to count.
    void AddEvents(const std::string& channel, int count);

    // Writes what was added. False when a file cannot be written.
    bool Write() const;

    const std::wstring& Directory() const { return directory_; }

private:
    std::wstring directory_;
    std::vector<RecordedChannel> channels_;
    std::map<std::string, std::string> events_;  // XML by channel
};

// The event as the recording's XML.
std::string EventXml(const std::string& channel, const RecordedEvent& event);

}  // namespace tavrin::test
