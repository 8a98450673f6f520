#include "query/text_match.h"

#include <algorithm>

#include "eventlog/records/event_record.h"

namespace tavrin::query {
namespace {

constexpr wchar_t Fold(wchar_t unit) {
    return unit >= L'A' && unit <= L'Z' ? static_cast<wchar_t>(unit + (L'a' - L'A')) : unit;
}

constexpr bool EqualFolded(wchar_t a, wchar_t b) {
    return Fold(a) == Fold(b);
}

}  // namespace

bool ContainsFolded(std::wstring_view text, std::wstring_view needle) {
    return needle.empty() || std::search(text.begin(), text.end(), needle.begin(), needle.end(),
                                         EqualFolded) != text.end();
}

bool MatchesProviderOrLevel(const eventlog::EventRecord& record, std::wstring_view text) {
    return ContainsFolded(record.providerName, text) || ContainsFolded(LevelName(record), text);
}

bool MatchesTextFilter(const eventlog::EventRecord& record, std::wstring_view text) {
    return MatchesProviderOrLevel(record, text) || ContainsFolded(record.timeText, text) ||
           ContainsFolded(record.processId, text);
}

}  // namespace tavrin::query
