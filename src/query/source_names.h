#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "query/filter_state.h"

namespace tavrin::query {

// Adds a channel's source names from the registry. Reads it once per filter. Most channels have no
// key there. Window thread.
void ScanRegistrySources(const std::wstring& channelPath, SourceFilter& filter);

// The names to list, in order: all selected ones, then the known ones that contain the search text.
std::vector<std::wstring> ShownSourceNames(const SourceFilter& filter, std::wstring_view search);

// The panel's caption: "Sources (all)" or "Sources (3 selected)".
std::wstring SourcesCaption(std::size_t selectedCount);

}  // namespace tavrin::query
