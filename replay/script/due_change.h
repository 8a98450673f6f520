#pragma once

#include "replay/events/event_maker.h"
#include "replay/script/script_line.h"

#include <cstdint>
#include <optional>
#include <string>

namespace replay::script {

// A scheduled change of a channel.
struct DueChange {
    std::uint64_t atMs = 0;  // milliseconds after the script was set
    std::wstring channel;
    bool clear = false;  // clears the channel; otherwise an event arrives
    std::string xml;     // the event; empty: generated from `event`
    events::MadeEvent event;
};

// Reads an "arrive" or "clear" line. Returns nothing if the line is wrong.
std::optional<DueChange> ReadDueChange(const ScriptLine& line);

}  // namespace replay::script
