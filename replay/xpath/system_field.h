#pragma once

#include "replay/events/channel_log.h"
#include "replay/events/event_source.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace replay::xpath {

// The parts of <System> that a query can name.
enum class SystemField {
    kProviderName,
    kProviderGuid,
    kEventSourceName,
    kEventId,
    kQualifiers,
    kVersion,
    kLevel,
    kTask,
    kOpcode,
    kKeywords,
    kSystemTime,
    kEventRecordId,
    kActivityId,
    kRelatedActivityId,
    kProcessId,
    kThreadId,
    kChannel,
    kComputer,
    kUserId,
    kElement,  // an element that every event has
    kUnknown,  // a name that no event has
};

// How a field's value compares.
enum class FieldType { kText, kGuid, kNumber, kTime };

// Returns the field at a path such as "System/Provider/@Name".
SystemField FindSystemField(std::string_view path);
FieldType TypeOf(SystemField field);

// A value: absent, a number or a text. Times are FILETIME numbers.
using FieldValue = std::variant<std::monostate, std::uint64_t, std::string_view>;

// A query's view of one event. Values in the index are not read from the event.
class EventView {
public:
    EventView(const events::ChannelLog& log, std::uint64_t ordinal)
        : log_(log), ordinal_(ordinal), facts_(log.Facts(ordinal)) {}

    // A returned text is valid until the next call.
    FieldValue Value(SystemField field);

private:
    const events::SystemFields& System();

    const events::ChannelLog& log_;
    std::uint64_t ordinal_;
    events::EventFacts facts_;
    events::EventPlace place_;
    std::optional<events::SystemFields> system_;
    std::string decoded_;
};

}  // namespace replay::xpath
