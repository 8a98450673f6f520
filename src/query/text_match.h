#pragma once

#include <string>
#include <string_view>

namespace tavrin::eventlog {
struct EventRecord;
}

namespace tavrin::query {

// Whether the needle occurs in the text. The letters A to Z match both cases, every
// other character only itself; an empty needle occurs everywhere.
bool ContainsFolded(std::wstring_view text, std::wstring_view needle);

// Whether a record passes the text filter: the text occurs in its provider's name,
// its level's name, its time or its process id.
bool MatchesTextFilter(const eventlog::EventRecord& record, std::wstring_view text);

// The part of it that is the same for all records of one provider and level.
bool MatchesProviderOrLevel(const eventlog::EventRecord& record, std::wstring_view text);

}  // namespace tavrin::query
