#pragma once

#include <string>
#include <string_view>

namespace tavrin::eventlog {
struct EventRecord;
}

namespace tavrin::query {

// Whether the needle occurs in the text. A to Z match a to z; every other character matches only
// itself. An empty needle always occurs.
bool ContainsFolded(std::wstring_view text, std::wstring_view needle);

// Whether a record passes the text filter: the text occurs in its provider's name,
// its level's name, its time or its process id.
bool MatchesTextFilter(const eventlog::EventRecord& record, std::wstring_view text);

// The part of MatchesTextFilter that depends only on provider and level.
bool MatchesProviderOrLevel(const eventlog::EventRecord& record, std::wstring_view text);

}  // namespace tavrin::query
