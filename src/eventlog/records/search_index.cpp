#include "eventlog/records/search_index.h"

#include <bit>
#include <cstring>
#include <utility>

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

SearchKeyPlace PlaceOfKey(std::size_t record) {
    // 1024 keys, 2048, 4096, ...: the chunk before number n ends at key (2^n - 1) * 1024.
    constexpr std::size_t kFirstChunk = 1024;
    const auto chunk = static_cast<std::size_t>(std::bit_width(record / kFirstChunk + 1)) - 1;
    const std::size_t size = kFirstChunk << chunk;
    return {chunk, record + kFirstChunk - size, size};
}

SearchIndex SearchIndexWriter::Write(std::span<const EventRecordPtr> records, std::size_t first) {
    SearchIndex added;
    KindNumbers newNumbers;
    std::shared_ptr<SearchKey[]> chunk = chunk_;
    for (std::size_t i = 0; i < records.size(); ++i) {
        const SearchKeyPlace place = PlaceOfKey(first + i);
        if (place.offset == 0) {
            chunk = std::shared_ptr<SearchKey[]>(new SearchKey[place.chunkSize]);
            added.chunks.push_back(chunk);
        }
        const EventRecord& record = *records[i];
        chunk.get()[place.offset] = {PackTime(record.timeText),
                                     static_cast<std::uint32_t>(PackProcess(record.processId)),
                                     NumberOf(records[i], newNumbers, added.kinds)};
    }
    // With its buckets reserved, merging allocates nothing and cannot fail.
    numbers_.reserve(numbers_.size() + newNumbers.size());
    numbers_.merge(newNumbers);
    chunk_ = std::move(chunk);
    return added;
}

std::uint32_t SearchIndexWriter::NumberOf(const EventRecordPtr& record, KindNumbers& newNumbers,
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

std::size_t SearchIndexWriter::HashKind::operator()(const EventRecord* record) const {
    return static_cast<std::size_t>(HashName(record->providerName)) + record->level;
}

bool SearchIndexWriter::SameKind::operator()(const EventRecord* a, const EventRecord* b) const {
    return a->level == b->level && SameName(a->providerName, b->providerName);
}

}  // namespace tavrin::eventlog
