#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <unordered_map>
#include <vector>

#include "query/packed_digits.h"

namespace tavrin::eventlog {
struct EventRecord;
}

namespace tavrin::query {

// What a text filter has to know of a record.
struct SearchKey {
    PackedDigits time;
    std::uint32_t process;
    std::uint32_t kind;
};

// The keys of loaded records: 16 bytes each, so that a filter can pass over a million of
// them without fetching the records themselves from memory.
class SearchIndex {
public:
    // The record must live until the index is cleared.
    void Add(const eventlog::EventRecord& record);
    void Clear();

    // By record, in the order in which they were added.
    std::span<const SearchKey> Keys() const { return keys_; }

    // Records of one kind have the same provider and level; a log has few. The first record
    // of each kind stands for it.
    std::span<const eventlog::EventRecord* const> Kinds() const { return kinds_; }

private:
    struct HashKind {
        std::size_t operator()(const eventlog::EventRecord* record) const;
    };
    struct SameKind {
        bool operator()(const eventlog::EventRecord* a, const eventlog::EventRecord* b) const;
    };

    std::vector<SearchKey> keys_;
    std::vector<const eventlog::EventRecord*> kinds_;
    std::unordered_map<const eventlog::EventRecord*, std::uint32_t, HashKind, SameKind> known_;
};

}  // namespace tavrin::query
