#include "ui/event_rows.h"

#include <iterator>
#include <mutex>
#include <utility>

namespace tavrin::ui {

eventlog::EventRecordList EventRows::Clear() {
    visible_.clear();
    filterCursor_ = 0;
    handOff_.clear();
    keys_ = {};
    filter_ = query::TextFilter();
    return std::exchange(loaded_, {});
}

bool EventRows::TakeBatch(eventlog::EventNode& node) {
    bool more = false;
    {
        const std::lock_guard lock(node.recordListMutex);
        const auto first = node.recordList.begin() + static_cast<std::ptrdiff_t>(node.counter);
        handOff_.insert(handOff_.end(), first, node.recordList.end());
        node.searchIndex.CopyTo(keys_, static_cast<std::size_t>(node.counter),
                                node.recordList.size());
        node.counter = node.recordList.size();
        // Read after the copying and under its lock: an end seen here leaves nothing behind.
        more = node.done.load() == 0 && node.loadResult.load() == 0;
    }
    loaded_.insert(loaded_.end(), std::make_move_iterator(handOff_.begin()),
                   std::make_move_iterator(handOff_.end()));
    handOff_.clear();
    return more;
}

void EventRows::AppendMatching(std::wstring_view filterText) {
    if (filterText != filter_.Text()) {
        filter_ = query::TextFilter(std::wstring(filterText));
    }
    filter_.AppendMatches(loaded_, keys_, filterCursor_, visible_);
    filterCursor_ = loaded_.size();
}

void EventRows::Rebuild(std::wstring_view filterText) {
    visible_.clear();
    filterCursor_ = 0;
    AppendMatching(filterText);
}

const eventlog::EventRecord* EventRows::Row(std::int64_t row) const {
    if (row < 0 || row >= static_cast<std::int64_t>(visible_.size())) {
        return nullptr;
    }
    return loaded_[visible_[static_cast<std::size_t>(row)]].get();
}

}  // namespace tavrin::ui
