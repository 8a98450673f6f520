#pragma once

#include "replay/events/event_maker.h"
#include "replay/script/script_line.h"

#include <cstdint>
#include <optional>
#include <string>

namespace replay::script {

// A change of a channel that a script schedules.
struct DueChange {
    std::uint64_t atMs = 0;  // after the script was taken up
    std::wstring channel;
    bool clear = false;  // the channel is cleared; otherwise an event arrives
    std::string xml;     // the event; empty: it is made from `event`
    events::MadeEvent event;
};

// The change of an "arrive" or "clear" line; nothing if the line is wrong.
std::optional<DueChange> ReadDueChange(const ScriptLine& line);

}  // namespace replay::script
