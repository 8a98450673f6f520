#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "query/filter_state.h"

namespace tavrin::query {

// Adds the source names that the registry knows for a channel. Asks the registry once
// for each filter; a channel without a key there, as most are, has none. Window thread.
void ScanRegistrySources(const std::wstring& channelPath, SourceFilter& filter);

// The names to offer, in order: the selected ones, whatever the search, then the known
// ones in which the search text occurs.
std::vector<std::wstring> ShownSourceNames(const SourceFilter& filter, std::wstring_view search);

// The caption of the panel for a channel: "Sources (all)" or "Sources (3 selected)".
std::wstring SourcesCaption(std::size_t selectedCount);

}  // namespace tavrin::query
