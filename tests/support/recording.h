#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "support/temp_folder.h"

namespace tavrin::test {

// An event of a recording. Texts are escaped in its XML, but for `data`, which is markup.
struct RecordedEvent {
    std::uint64_t recordId = 1;
    std::wstring provider = L"Test-Provider";
    std::uint32_t eventId = 1000;
    unsigned level = 4;
    std::uint64_t keywords = 0x8000000000000000;
    std::wstring time = L"2024-03-05T07:09:03.0000000Z";
    std::optional<std::uint32_t> processId = 4711;
    std::wstring data = L"<EventData><Data Name='value'>content</Data></EventData>";
    std::optional<std::wstring> message = L"A message.";
};

// A channel of channels.xml. The attributes, if any, stand behind the usual ones as they are.
struct RecordedChannel {
    std::wstring name;
    std::wstring type = L"Admin";
    std::wstring publisher = L"";
    bool enabled = true;
    std::wstring attributes = L"";
};

// A recording in a folder of its own, in the form in which the replay service reads it.
class Recording {
public:
    explicit Recording(std::vector<RecordedChannel> channels = {});

    void AddChannel(RecordedChannel channel);

    // The whole log of a channel, oldest event first.
    void WriteEvents(const std::wstring& channel, const std::vector<RecordedEvent>& events) const;

    // As the service writes an event while it is watched.
    void AppendEvent(const std::wstring& channel, const RecordedEvent& event) const;

    std::filesystem::path FileOf(const std::wstring& channel) const;
    const std::filesystem::path& folder() const { return folder_.path(); }

private:
    void WriteChannels() const;

    TempFolder folder_;
    std::vector<RecordedChannel> channels_;
};

// The event's XML, in UTF-8, with its rendering information when it has a message.
std::string EventXml(const std::wstring& channel, const RecordedEvent& event);

// A channel's file.
std::string EventsXml(const std::wstring& channel, const std::vector<RecordedEvent>& events);

// A number of events with ascending record ids from `first` on, each otherwise like the model.
std::vector<RecordedEvent> Events(std::size_t count, const RecordedEvent& model = {},
                                  std::uint64_t first = 1);

}  // namespace tavrin::test
