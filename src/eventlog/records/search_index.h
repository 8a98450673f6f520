#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <unordered_map>
#include <vector>

#include "eventlog/records/event_record.h"
#include "eventlog/records/packed_digits.h"

namespace tavrin::eventlog {

// What the text filter needs to know about a record. Records of one kind have the same
// provider and level; a log has few kinds.
struct SearchKey {
    PackedDigits time;
    std::uint32_t process;
    std::uint32_t kind;
};

// The search keys of a load's records: 16 bytes a record, so that a filter passes over a
// million records without fetching them from memory.
//
// The node and the window have an index each, which share the chunks. The loader writes the
// keys of a page before it hands the page over, so nobody reads a key that is being written.
struct SearchIndex {
    std::vector<std::shared_ptr<const SearchKey[]>> chunks;  // in load order
    EventRecordList kinds;                                   // each by its first record
};

// Records in load order with their search index.
struct LoadedRecords {
    EventRecordList records{};
    SearchIndex index{};
};

// Where a record's key is. Each chunk is twice as large as the one before: a small log costs
// little, and a large one is read from few places.
struct SearchKeyPlace {
    std::size_t chunk;
    std::size_t offset;
    std::size_t chunkSize;
};

SearchKeyPlace PlaceOfKey(std::size_t record);

// Writes the search keys of one load. Not thread-safe: one caller at a time.
class SearchIndexWriter {
public:
    struct HashKind {
        std::size_t operator()(const EventRecord* record) const;
    };

    // Writes the keys of records[0], records[1], ..., which are the load's records number
    // `first`, first + 1, ... Returns what the load's index lacks from then on. The records
    // must stay alive as long as the writer. Throws std::bad_alloc and can be called again.
    SearchIndex Write(std::span<const EventRecordPtr> records, std::size_t first);

private:
    struct SameKind {
        bool operator()(const EventRecord* a, const EventRecord* b) const;
    };
    // The number of each kind, by its first record.
    using KindNumbers = std::unordered_map<const EventRecord*, std::uint32_t, HashKind, SameKind>;

    std::uint32_t NumberOf(const EventRecordPtr& record, KindNumbers& newNumbers,
                           EventRecordList& newKinds) const;

    std::shared_ptr<SearchKey[]> chunk_;  // the last one
    KindNumbers numbers_;
};

}  // namespace tavrin::eventlog
