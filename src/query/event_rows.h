#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string_view>
#include <vector>

#include "eventlog/event_node.h"
#include "eventlog/search_index.h"
#include "query/text_filter.h"

namespace tavrin::ui {

// The records that were taken from the shown channel and the rows that show them:
// newest first, as they were loaded, less those that the filter text hides. Window
// thread only.
class EventRows {
public:
    // Forgets everything, for a new load, and gives back the records.
    eventlog::EventRecordList Clear();

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

    // What the text filter knows of the loaded records.
    const eventlog::SearchKeys& Keys() const { return keys_; }

private:
    eventlog::EventRecordList loaded_;
    std::vector<std::uint32_t> visible_;            // indexes into loaded_
    std::size_t filterCursor_ = 0;                  // records tested so far
    std::deque<eventlog::EventRecordPtr> handOff_;  // taken, not yet among the loaded
    eventlog::SearchKeys keys_;                     // of loaded_
    query::TextFilter filter_;                      // the last one used since the last Clear
};

}  // namespace tavrin::ui
