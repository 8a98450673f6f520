#include "ui/event_rows.h"

#include <iterator>
#include <mutex>

#include "eventlog/event_record.h"
#include "query/text_match.h"

namespace tavrin::ui {

void EventRows::Clear() {
    loaded_.clear();
    visible_.clear();
    filterCursor_ = 0;
    handOff_.clear();
}

bool EventRows::TakeBatch(eventlog::EventNode& node) {
    bool more = false;
    {
        const std::lock_guard lock(node.recordListMutex);
        const auto first = node.recordList.begin() + static_cast<std::ptrdiff_t>(node.counter);
        handOff_.insert(handOff_.end(), first, node.recordList.end());
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
    for (; filterCursor_ < loaded_.size(); ++filterCursor_) {
        if (query::MatchesTextFilter(*loaded_[filterCursor_], filterText)) {
            visible_.push_back(static_cast<std::uint32_t>(filterCursor_));
        }
    }
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

std::span<const eventlog::EventRecordPtr> EventRows::LoadedFrom(std::size_t first) const {
    return std::span(loaded_).subspan(first);
}

}  // namespace tavrin::ui
