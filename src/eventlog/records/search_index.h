#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <unordered_map>
#include <vector>

#include "base/chunked_list.h"
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
struct SearchIndex {
    base::ChunkedList<SearchKey> keys;        // in load order
    base::ChunkedList<EventRecordPtr> kinds;  // each by its first record
};

// Records in load order with their search index. What the window has follows what the node has.
struct LoadedRecords {
    base::ChunkedList<EventRecordPtr> records{};
    SearchIndex index{};
};

// What a page adds to a search index.
struct PageIndex {
    std::vector<SearchKey> keys;
    EventRecordList newKinds;
};

// Makes the search keys of one load. Not thread-safe: one caller at a time.
class SearchKeyMaker {
public:
    struct HashKind {
        std::size_t operator()(const EventRecord* record) const;
    };

    // Makes the keys of the load's next records, which must stay alive as long as this object.
    // On std::bad_alloc nothing changes.
    PageIndex Index(std::span<const EventRecordPtr> page);

private:
    struct SameKind {
        bool operator()(const EventRecord* a, const EventRecord* b) const;
    };
    // The number of each kind, by its first record.
    using KindNumbers = std::unordered_map<const EventRecord*, std::uint32_t, HashKind, SameKind>;

    std::uint32_t NumberOf(const EventRecordPtr& record, KindNumbers& newNumbers,
                           EventRecordList& newKinds) const;

    KindNumbers numbers_;
};

}  // namespace tavrin::eventlog
