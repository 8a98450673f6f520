#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "eventlog/loading/load_protocol.h"
#include "query/filter_state.h"
#include "query/text_filter.h"

namespace tavrin::query {

// What one batch brought.
struct Batch {
    bool more = false;    // the load goes on
    SourceSet providers;  // full names: all that are new in the load, and perhaps others
};

// The records taken from the shown channel and the rows that show them: newest first, as
// loaded, without those that the filter text hides. Window thread only.
class EventRows {
public:
    // Empties the rows for a new load. Returns the records.
    eventlog::LoadedRecords Clear();

    // Takes every record that the node's loader added since the last batch. After
    // std::bad_alloc the next batch brings what this one lacks.
    Batch TakeBatch(eventlog::EventNode& node);

    // Appends rows for the records that are not tested yet and that the filter text matches.
    // Throws std::bad_alloc; another call goes on where this one stopped.
    void AppendMatching(std::wstring_view filterText);

    // Makes the rows anew for another filter text. Throws as AppendMatching does.
    void Rebuild(std::wstring_view filterText);

    std::size_t RowCount() const { return visible_.size(); }

    // The record of a row; null for a row that does not exist.
    const eventlog::EventRecord* Row(std::int64_t row) const;

    std::size_t LoadedCount() const { return loaded_.records.size(); }

private:
    eventlog::EventRecordList handOff_;  // taken, not yet among the loaded
    eventlog::LoadedRecords loaded_;
    std::size_t knownKinds_ = 0;          // whose providers earlier batches brought
    std::vector<std::uint32_t> visible_;  // indexes into the loaded records
    std::size_t filterCursor_ = 0;        // number of loaded records that are tested
    TextFilter filter_;                   // the last one used since the last Clear
};

}  // namespace tavrin::query
