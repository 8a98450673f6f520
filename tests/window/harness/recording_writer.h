#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "support/temp_folder.h"

namespace tavrin::test {

// An event as a test describes it. Texts are taken as characters and escaped, but `eventData`,
// which is markup.
struct EventSpec {
    std::uint64_t recordId = 1;
    std::wstring provider = L"Test-Provider";
    std::uint32_t eventId = 1000;
    unsigned level = 4;
    std::uint64_t keywords = 0x8000000000000000;
    std::wstring time = L"2024-03-05T07:09:03.0000000Z";
    std::optional<std::uint32_t> processId = 4711;
    std::wstring eventData = L"<EventData><Data Name='value'>content</Data></EventData>";
    std::optional<std::wstring> message = L"A message.";
};

// A channel of channels.xml. The attributes, if any, stand behind the usual ones as they are.
struct ChannelSpec {
    std::wstring name;
    std::wstring type = L"Operational";
    std::wstring publisher = L"";
    bool enabled = true;
    std::wstring attributes = L"";
};

// A recording in a folder of its own, in the form in which the replay service reads it.
class RecordingWriter {
public:
    explicit RecordingWriter(const std::vector<ChannelSpec>& channels);

    // The whole log of a channel, oldest event first.
    void WriteEvents(const std::wstring& channel, const std::vector<EventSpec>& events) const;

    // As the service writes an event while it is watched.
    void AppendEvent(const std::wstring& channel, const EventSpec& event) const;

    std::filesystem::path FileOf(const std::wstring& channel) const;
    const std::filesystem::path& folder() const { return folder_.path(); }

private:
    TempFolder folder_;
};

// The event's XML as the service renders it, with its rendering information when it has a
// message.
std::wstring EventXml(const std::wstring& channel, const EventSpec& event);

// A number of events with ascending record ids from `first` on, each otherwise like the model.
std::vector<EventSpec> Events(std::size_t count, EventSpec model = {}, std::uint64_t first = 1);

}  // namespace tavrin::test
