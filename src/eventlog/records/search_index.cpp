#include "eventlog/records/search_index.h"

#include <cstring>

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

PageIndex SearchKeyMaker::Index(std::span<const EventRecordPtr> page) {
    PageIndex added;
    KindNumbers newNumbers;
    added.keys.reserve(page.size());
    for (const EventRecordPtr& record : page) {
        added.keys.push_back({PackTime(record->timeText),
                              static_cast<std::uint32_t>(PackProcess(record->processId)),
                              NumberOf(record, newNumbers, added.newKinds)});
    }
    // With its buckets reserved, merging allocates nothing and cannot fail.
    numbers_.reserve(numbers_.size() + newNumbers.size());
    numbers_.merge(newNumbers);
    return added;
}

std::uint32_t SearchKeyMaker::NumberOf(const EventRecordPtr& record, KindNumbers& newNumbers,
                                       EventRecordList& newKinds) const {
    const auto known = numbers_.find(record.get());
    if (known != numbers_.end()) {
        return known->second;
    }
    const auto next = static_cast<std::uint32_t>(numbers_.size() + newNumbers.size());
    const auto [entry, isNew] = newNumbers.try_emplace(record.get(), next);
    if (isNew) {
        newKinds.push_back(record);
    }
    return entry->second;
}

std::size_t SearchKeyMaker::HashKind::operator()(const EventRecord* record) const {
    return static_cast<std::size_t>(HashName(record->providerName)) + record->level;
}

bool SearchKeyMaker::SameKind::operator()(const EventRecord* a, const EventRecord* b) const {
    return a->level == b->level && SameName(a->providerName, b->providerName);
}

}  // namespace tavrin::eventlog
