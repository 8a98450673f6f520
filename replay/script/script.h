#pragma once

#include "replay/recording/channel.h"
#include "replay/script/faults.h"
#include "replay/script/live_feed.h"
#include "replay/script/pace.h"

#include <string>
#include <string_view>
#include <vector>

namespace replay::script {

// The cost of calls that a script sets; no function means all of them.
struct PaceSetting {
    std::optional<calls::ApiFunction> function;
    Pace::Cost cost;
};

// A script as read.
struct Script {
    std::vector<FaultRule> faults;
    std::vector<DueChange> changes;
    std::vector<PaceSetting> paces;
    std::vector<recording::ChannelConfig> channels;
    std::vector<calls::ApiFunction> logged;
    std::vector<std::size_t> wrongLines;  // counted from 1
};

Script ReadScript(std::wstring_view text);

}  // namespace replay::script
