#include "endurance/faults/story_channels.h"

#include <algorithm>
#include <cwchar>
#include <iterator>

namespace tavrin::test {
namespace {

constexpr std::uint64_t kSmallCount = 200;
constexpr std::uint64_t kLargeCount = 10400;

std::wstring TimeText(std::uint64_t second) {
    wchar_t text[40];
    std::swprintf(text, std::size(text), L"2024-03-05T%02u:%02u:%02u.0000000Z",
                  static_cast<unsigned>(second / 3600), static_cast<unsigned>(second / 60 % 60),
                  static_cast<unsigned>(second % 60));
    return text;
}

// No two events look alike, so no row can be mistaken for another.
RecordedEvent NumberedEvent(std::uint64_t id) {
    const auto number = static_cast<std::uint32_t>(id);
    const std::wstring value = L"value " + std::to_wstring(id);
    return {.recordId = id,
            .provider = id % 2 == 0 ? L"Acme-Tools" : L"Acme-Other",
            .eventId = 1000 + number,
            .level = 1 + number % 5,
            .time = TimeText(id),
            .processId = 4 * number,
            .data = L"<EventData><Data Name='a'>" + value + L"</Data></EventData>",
            .message = L"Message " + std::to_wstring(id)};
}

std::vector<RecordedEvent> NewestFirst(std::uint64_t count) {
    std::vector<RecordedEvent> events;
    for (std::uint64_t id = count; id > 0; --id) {
        events.push_back(NumberedEvent(id));
    }
    return events;
}

std::vector<RecordedEvent> SmallEvents() {
    std::vector<RecordedEvent> events = NewestFirst(kSmallCount);
    events[1].message.reset();
    events[2].provider = L"Gone-Provider";
    events[2].message.reset();
    return events;
}

std::vector<RecordedEvent> OldestFirst(std::vector<RecordedEvent> events) {
    std::ranges::reverse(events);
    return events;
}

}  // namespace

const StoryChannel& SmallChannel() {
    static const StoryChannel channel = {
        L"Acme-Tools/Operational",
        {L"Applications and Service Logs", L"Acme", L"Tools", L"Operational"},
        SmallEvents()};
    return channel;
}

const StoryChannel& LargeChannel() {
    static const StoryChannel channel = {
        L"Large", {L"Applications and Service Logs", L"Large"}, NewestFirst(kLargeCount)};
    return channel;
}

const std::vector<RecordedChannel>& ListedChannels() {
    static const std::vector<RecordedChannel> channels = {
        {.name = L"Acme-Tools/Operational", .type = L"Operational", .publisher = L"Acme-Tools"},
        {.name = L"Application"},
        {.name = L"Large"}};
    return channels;
}

std::wstring DataText(const RecordedEvent& event) {
    return L"value " + std::to_wstring(event.recordId) + L"\r\n";
}

RecordedEvent ArrivingEvent() {
    return NumberedEvent(kSmallCount + 1);
}

FaultRecording::FaultRecording(Content content) : writer_(ListedChannels()) {
    writer_.WriteEvents(SmallChannel().path, OldestFirst(SmallChannel().events));
    if (content == Content::Whole) {
        writer_.WriteEvents(LargeChannel().path, OldestFirst(LargeChannel().events));
    }
}

}  // namespace tavrin::test
