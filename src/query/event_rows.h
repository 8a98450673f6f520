#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "eventlog/loading/load_protocol.h"
#include "query/filter_state.h"
#include "query/text_filter.h"

namespace tavrin::query {

// The outcome of taking a batch.
struct Batch {
    bool more = false;    // the load goes on
    SourceSet providers;  // full names: every new one, perhaps others
};

// The records taken from the shown channel, and the rows of those that match the filter text, in
// load order: newest first. Window thread only.
class EventRows {
public:
    // Empties the rows for a new load. Returns the records.
    eventlog::LoadedRecords Clear();

    // Takes every record that the node's loader added since the last batch. After std::bad_alloc
    // the next batch brings what is missing.
    Batch TakeBatch(eventlog::EventNode& node);

    // Tests the records that are not tested yet and appends rows for those that match. After
    // std::bad_alloc another call continues.
    void AppendMatching(std::wstring_view filterText);

    // Rebuilds the rows for another filter text. Throws as AppendMatching does.
    void Rebuild(std::wstring_view filterText);

    std::size_t RowCount() const { return visible_.size(); }

    // The record of a row; null for a row that does not exist.
    const eventlog::EventRecord* Row(std::int64_t row) const;

    std::size_t LoadedCount() const { return loaded_.records.size(); }

private:
    eventlog::LoadedRecords loaded_;
    std::size_t knownKinds_ = 0;          // whose providers earlier batches brought
    std::vector<std::uint32_t> visible_;  // indexes into the loaded records
    std::size_t filterCursor_ = 0;        // number of loaded records that are tested
    TextFilter filter_;                   // the last one used since the last Clear
};

}  // namespace tavrin::query
