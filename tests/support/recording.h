#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "support/temp_folder.h"

namespace tavrin::test {

// An event of a recording. Its texts are escaped in the XML, except `data`, which is markup.
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

// A channel of channels.xml. `attributes` is markup that follows the usual attributes.
struct RecordedChannel {
    std::wstring name;
    std::wstring type = L"Admin";
    std::wstring publisher = L"";
    bool enabled = true;
    std::wstring attributes = L"";
};

// A recording in a temporary folder, in the format that the replay service reads.
class Recording {
public:
    explicit Recording(std::vector<RecordedChannel> channels = {});

    void AddChannel(RecordedChannel channel);

    // Writes the whole log of a channel. `events` is oldest first.
    void WriteEvents(const std::wstring& channel, const std::vector<RecordedEvent>& events) const;

    // Adds an event to a log that the replay service is watching.
    void AppendEvent(const std::wstring& channel, const RecordedEvent& event) const;

    std::filesystem::path FileOf(const std::wstring& channel) const;
    const std::filesystem::path& folder() const { return folder_.path(); }

private:
    void WriteChannels() const;

    TempFolder folder_;
    std::vector<RecordedChannel> channels_;
};

// Returns the event's XML in UTF-8, with rendering information if the event has a message.
std::string EventXml(const std::wstring& channel, const RecordedEvent& event);

// Returns the contents of a channel's file.
std::string EventsXml(const std::wstring& channel, const std::vector<RecordedEvent>& events);

// Returns `count` copies of the model with ascending record ids from `first` on.
std::vector<RecordedEvent> Events(std::size_t count, const RecordedEvent& model = {},
                                  std::uint64_t first = 1);

// Events with the messages "Message 1", "Message 2", ...: the word and the record id.
std::vector<RecordedEvent> EventsWithMessages(std::size_t count);

}  // namespace tavrin::test
