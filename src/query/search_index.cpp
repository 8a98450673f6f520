#include "query/search_index.h"

#include <cstring>
#include <string_view>

#include "eventlog/event_record.h"

namespace tavrin::query {
namespace {

using eventlog::EventRecord;

// A name is zero behind its end, and eight bytes at a time reach one of those zeros: that of
// the terminator at the latest.
std::uint64_t HashName(const wchar_t* name) {
    constexpr std::size_t kUnits = sizeof(std::uint64_t) / sizeof(wchar_t);
    static_assert(eventlog::kProviderNameCapacity % kUnits == 0);
    std::uint64_t hash = 0;
    do {
        std::uint64_t part = 0;
        std::memcpy(&part, name, sizeof(part));
        hash = (hash ^ part) * 0x9E3779B97F4A7C15;
        hash ^= hash >> 32;
        name += kUnits;
    } while (name[-1] != L'\0');
    return hash;
}

}  // namespace

void SearchIndex::Add(const EventRecord& record) {
    const auto [entry, isNew] =
        known_.try_emplace(&record, static_cast<std::uint32_t>(kinds_.size()));
    if (isNew) {
        kinds_.push_back(&record);
    }
    keys_.push_back({PackTime(record.timeText),
                     static_cast<std::uint32_t>(PackProcess(record.processId)), entry->second});
}

void SearchIndex::Clear() {
    keys_.clear();
    kinds_.clear();
    known_.clear();
}

std::size_t SearchIndex::HashKind::operator()(const EventRecord* record) const {
    return static_cast<std::size_t>(HashName(record->providerName)) + record->level;
}

bool SearchIndex::SameKind::operator()(const EventRecord* a, const EventRecord* b) const {
    return a->level == b->level && std::wstring_view(a->providerName) == b->providerName;
}

}  // namespace tavrin::query
