#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <span>
#include <string_view>
#include <vector>

#include "eventlog/event_node.h"

namespace tavrin::ui {

// The records that were taken from the shown channel and the rows that show them:
// newest first, as they were loaded, less those that the filter text hides. Window
// thread only.
class EventRows {
public:
    // Forgets everything, for a new load.
    void Clear();

    // Takes every record that the node's loader added since the last batch. False when
    // nothing will follow: the load is done or has failed.
    bool TakeBatch(eventlog::EventNode& node);

    // Appends rows for the records not tested yet, those that the filter text matches.
    void AppendMatching(std::wstring_view filterText);

    // Makes the rows anew for another filter text.
    void Rebuild(std::wstring_view filterText);

    std::size_t RowCount() const { return visible_.size(); }

    // The record of a row; null for a row that does not exist.
    const eventlog::EventRecord* Row(std::int64_t row) const;

    std::size_t LoadedCount() const { return loaded_.size(); }

    // The loaded records from an index on.
    std::span<const eventlog::EventRecordPtr> LoadedFrom(std::size_t first) const;

private:
    eventlog::EventRecordList loaded_;
    std::vector<std::uint32_t> visible_;            // indexes into loaded_
    std::size_t filterCursor_ = 0;                  // records tested so far
    std::deque<eventlog::EventRecordPtr> handOff_;  // taken, not yet among the loaded
};

}  // namespace tavrin::ui
