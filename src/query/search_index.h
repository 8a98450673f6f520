#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <unordered_map>
#include <vector>

#include "query/time_digits.h"

namespace tavrin::eventlog {
struct EventRecord;
}

namespace tavrin::query {

// What a text filter has to know of records, 12 bytes each, so that it can pass over a
// million of them without fetching the records themselves from memory.
class SearchIndex {
public:
    // Records of one kind have the same provider, level and process. A log has few.
    using Kind = std::uint32_t;

    // The record must live until the index is cleared.
    void Add(const eventlog::EventRecord& record);
    void Clear();

    std::size_t RecordCount() const { return kinds_.size(); }
    Kind KindOf(std::size_t record) const { return kinds_[record]; }
    TimeDigits TimeOf(std::size_t record) const { return times_[record]; }

    std::size_t KindCount() const { return examples_.size(); }

    // The first record of each kind, from a kind on; in the order in which they came.
    std::span<const eventlog::EventRecord* const> KindsFrom(std::size_t kind) const {
        return std::span(examples_).subspan(kind);
    }

private:
    struct HashKind {
        std::size_t operator()(const eventlog::EventRecord* record) const;
    };
    struct SameKind {
        bool operator()(const eventlog::EventRecord* a, const eventlog::EventRecord* b) const;
    };

    std::vector<Kind> kinds_;        // by record
    std::vector<TimeDigits> times_;  // by record
    std::vector<const eventlog::EventRecord*> examples_;
    std::unordered_map<const eventlog::EventRecord*, Kind, HashKind, SameKind> known_;
};

}  // namespace tavrin::query
