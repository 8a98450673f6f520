#pragma once

#include <cstdint>
#include <string>

namespace replay::events {

// A generated event. Texts are UTF-8, not escaped.
struct MadeEvent {
    std::string provider = "Replay";
    std::uint32_t eventId = 1;
    std::uint32_t level = 4;
    std::uint64_t keywords = 0x80000000000000;
    std::uint64_t time = 0;  // FILETIME
    std::uint64_t recordId = 0;
    std::uint32_t processId = 4;
    std::uint32_t threadId = 8;
    std::string channel;
    std::string computer = "REPLAY";
    std::string data;     // single value of the event data; empty: none
    std::string message;  // empty: no rendered message
};

// Returns the event's XML, with <RenderingInfo> if it has a message.
std::string MakeEventXml(const MadeEvent& event);

}  // namespace replay::events
