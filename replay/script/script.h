#pragma once

#include "replay/recording/channel.h"
#include "replay/script/faults.h"
#include "replay/script/live_feed.h"
#include "replay/script/pace.h"

#include <string>
#include <string_view>
#include <vector>

namespace replay::script {

// A parsed script.
struct Script {
    std::vector<FaultRule> faults;
    std::vector<DueChange> changes;
    std::vector<PaceSetting> paces;
    std::vector<ScanSetting> scans;
    std::vector<recording::ChannelConfig> channels;
    std::vector<calls::ApiFunction> logged;
    std::vector<std::size_t> wrongLines;  // line numbers from 1
};

// Parses a script. Wrong lines are listed and skipped.
Script ReadScript(std::wstring_view text);

}  // namespace replay::script
