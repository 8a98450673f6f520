#include "eventlog/search_index.h"

#include <cstring>
#include <iterator>

#include "eventlog/event_record.h"

namespace tavrin::eventlog {
namespace {

// Names are compared and hashed eight bytes at a time. All is zero behind a name's end, and
// the last eight bytes that are read hold one of those zeros: the terminator at the latest.
using NamePart = std::uint64_t;
constexpr std::size_t kPartUnits = sizeof(NamePart) / sizeof(wchar_t);
static_assert(kProviderNameCapacity % kPartUnits == 0);

NamePart PartAt(const wchar_t* place) {
    NamePart part = 0;
    std::memcpy(&part, place, sizeof(part));
    return part;
}

bool EndsWithin(const wchar_t* part) {
    return part[kPartUnits - 1] == L'\0';
}

NamePart HashName(const wchar_t* name) {
    NamePart hash = 0;
    for (;; name += kPartUnits) {
        hash = (hash ^ PartAt(name)) * 0x9E3779B97F4A7C15;
        hash ^= hash >> 32;
        if (EndsWithin(name)) {
            return hash;
        }
    }
}

bool SameName(const wchar_t* a, const wchar_t* b) {
    for (; PartAt(a) == PartAt(b); a += kPartUnits, b += kPartUnits) {
        if (EndsWithin(a)) {
            return true;
        }
    }
    return false;
}

}  // namespace

void SearchIndex::Add(const std::shared_ptr<const EventRecord>& record) {
    const auto [entry, isNew] =
        kinds_.try_emplace(record.get(), static_cast<std::uint32_t>(keys_.kinds.size()));
    if (isNew) {
        keys_.kinds.push_back(record);
    }
    keys_.keys.push_back({PackTime(record->timeText),
                          static_cast<std::uint32_t>(PackProcess(record->processId)),
                          entry->second});
}

void SearchIndex::Clear() {
    *this = {};
}

void SearchIndex::Truncate(std::size_t count) {
    if (count < keys_.keys.size()) {
        keys_.keys.resize(count);
    }
}

void SearchIndex::CopyTo(SearchKeys& copy, std::size_t first, std::size_t last) const {
    const auto begin = keys_.keys.begin();
    copy.keys.insert(copy.keys.end(), begin + static_cast<std::ptrdiff_t>(first),
                     begin + static_cast<std::ptrdiff_t>(last));
    copy.kinds.insert(copy.kinds.end(),
                      keys_.kinds.begin() + static_cast<std::ptrdiff_t>(copy.kinds.size()),
                      keys_.kinds.end());
}

std::size_t SearchIndex::HashKind::operator()(const EventRecord* record) const {
    return static_cast<std::size_t>(HashName(record->providerName)) + record->level;
}

bool SearchIndex::SameKind::operator()(const EventRecord* a, const EventRecord* b) const {
    return a->level == b->level && SameName(a->providerName, b->providerName);
}

}  // namespace tavrin::eventlog
