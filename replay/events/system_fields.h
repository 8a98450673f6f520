#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace replay::events {

// The values of an event's <System>. An absent value is an empty optional or a null view. Texts are
// views of the event's XML with entities not decoded.
struct SystemFields {
    std::optional<std::string_view> providerName;
    std::optional<std::string_view> providerGuid;
    std::optional<std::string_view> eventSourceName;
    std::optional<std::uint16_t> eventId;
    std::optional<std::uint16_t> qualifiers;
    std::optional<std::uint8_t> version;
    std::optional<std::uint8_t> level;
    std::optional<std::uint16_t> task;
    std::optional<std::uint8_t> opcode;
    std::optional<std::uint64_t> keywords;
    std::optional<std::uint64_t> timeCreated;  // FILETIME
    std::optional<std::uint64_t> recordId;
    std::optional<std::string_view> activityId;
    std::optional<std::string_view> relatedActivityId;
    std::optional<std::uint32_t> processId;
    std::optional<std::uint32_t> threadId;
    std::optional<std::string_view> channel;
    std::optional<std::string_view> computer;
    std::optional<std::string_view> userId;
};

}  // namespace replay::events
