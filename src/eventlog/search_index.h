#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

#include "eventlog/packed_digits.h"

namespace tavrin::eventlog {

struct EventRecord;

// What a text filter has to know of a record.
struct SearchKey {
    PackedDigits time;
    std::uint32_t process;
    std::uint32_t kind;
};

// The keys of loaded records: 16 bytes each, so that a filter can pass over a million of
// them without fetching the records themselves from memory.
struct SearchKeys {
    // By record, in load order.
    std::vector<SearchKey> keys;

    // Records of one kind have the same provider and level; a log has few. The first record
    // of each kind stands for it.
    std::vector<std::shared_ptr<const EventRecord>> kinds;
};

// Makes the keys of one load's records.
class SearchIndex {
public:
    void Add(const std::shared_ptr<const EventRecord>& record);
    void Clear();

    // Forgets the keys of all but the first records.
    void Truncate(std::size_t count);

    // Appends the keys from first to before last, and the kinds that the copy lacks. It is of
    // an earlier state of this index, or empty.
    void CopyTo(SearchKeys& copy, std::size_t first, std::size_t last) const;

private:
    struct HashKind {
        std::size_t operator()(const EventRecord* record) const;
    };
    struct SameKind {
        bool operator()(const EventRecord* a, const EventRecord* b) const;
    };

    SearchKeys keys_;
    // By the record that stands for the kind.
    std::unordered_map<const EventRecord*, std::uint32_t, HashKind, SameKind> kinds_;
};

}  // namespace tavrin::eventlog
