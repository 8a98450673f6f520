#include "window/filters/filter_model.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "window/filters/filter_driver.h"

namespace tavrin::test {

using namespace std::chrono_literals;

void FilterModel::SelectChannel(std::size_t index) {
    if (current_ == index) {
        return;  // the tree only reports a changed selection
    }
    Settle();  // a pending change is applied first
    current_ = index;
    text_.clear();
    State().applied = Wanted();
    StartLoad();
}

void FilterModel::SelectFolder(const std::wstring& name) {
    if (!current_ && nodeName_ == name) {
        return;
    }
    Settle();
    current_.reset();
    nodeName_ = name;
    sources_.clear();
    sourcesCaption_ = L"Sources";
}

void FilterModel::Search(const std::wstring& text) {
    search_ = text;
    RebuildSources();
}

void FilterModel::ToggleSource(std::size_t row) {
    SourceRow& source = sources_[row];
    source.isTicked = !source.isTicked;
    if (source.isTicked) {
        State().selected.insert(source.name);
    } else {
        State().selected.erase(source.name);
    }
    NameNode();
    isPending_ = true;
}

void FilterModel::ShowAllSources() {
    State().selected.clear();
    RebuildSources();
    NameNode();
    ApplyAtOnce();
}

void FilterModel::SetPicker(Bound bound, std::optional<LocalTime> time) {
    (bound == Bound::From ? from_ : to_) = time;
    isPending_ = true;
}

void FilterModel::SetAs(Bound bound, std::size_t row) {
    const LocalTime shown(TimeOf(Shown()[row]).time_since_epoch() + offsets_.shown);
    SetPicker(bound, shown);
    ApplyAtOnce();
}

void FilterModel::Refresh() {
    if (current_) {
        StartLoad();  // repeats the last query: pending changes stay pending
    }
}

void FilterModel::Settle() {
    if (std::exchange(isPending_, false)) {
        Apply();
    }
}

FilterView FilterModel::View() const {
    FilterView view;
    for (const RecordedEvent& event : Shown()) {
        view.rows.push_back(ExpectedCells(event, offsets_.shown));
    }
    view.loaded = std::to_wstring(view.rows.size());
    view.total = std::to_wstring(total_);
    view.totalCaption = totalCaption_;
    view.nodeName = nodeName_;
    view.sourcesCaption = sourcesCaption_;
    view.sources = sources_;
    view.status = status_;
    view.filterText = text_;
    view.from = from_;
    view.to = to_;
    return view;
}

std::optional<std::wstring> FilterModel::LastQuery(std::size_t index) const {
    const std::optional<ServerFilter>& applied = states_[index].applied;
    if (!applied) {
        return std::nullopt;
    }
    return ExpectedQuery(channels_[index].name, *applied);
}

ServerFilter FilterModel::Wanted() {
    return {State().selected, storedFrom_, storedUntil_};
}

UtcTime FilterModel::Utc(LocalTime local) const {
    return UtcTime(local.time_since_epoch() - offsets_.chosen);
}

void FilterModel::Apply() {
    const auto from = from_ ? std::optional(Utc(*from_)) : std::nullopt;
    const auto until = to_ ? std::optional(Utc(*to_) + 1s) : std::nullopt;
    if (from && until && *from >= *until) {
        status_ = kRangeError;
        return;
    }
    if (from != storedFrom_ || until != storedUntil_) {
        status_.clear();
    }
    storedFrom_ = from;
    storedUntil_ = until;
    if (!current_) {
        return;
    }
    NameNode();
    const std::wstring before = *LastQuery(*current_);
    if (ExpectedQuery(channels_[*current_].name, Wanted()) != before) {
        State().applied = Wanted();
        StartLoad();
    }
}

void FilterModel::ApplyAtOnce() {
    isPending_ = false;
    Apply();
}

void FilterModel::StartLoad() {
    const ServerFilter& filter = *State().applied;
    const std::vector<RecordedEvent>& all = channels_[*current_].events;
    loaded_.clear();
    std::ranges::copy_if(all, std::back_inserter(loaded_),
                         [&](const RecordedEvent& event) { return IsFound(event, filter); });
    for (const RecordedEvent& event : loaded_) {
        State().known.insert(event.provider);
    }
    total_ = all.size();
    totalCaption_ = ExpectedQuery({}, filter) == L"*" ? L" Total: " : L" In log: ";
    status_.clear();
    RebuildSources();
    NameNode();
}

void FilterModel::RebuildSources() {
    if (!current_) {
        return;
    }
    const ChannelState& state = State();
    sources_.clear();
    for (const std::wstring& name : state.selected) {
        sources_.push_back({name, true});
    }
    for (const std::wstring& name : state.known) {
        if (!state.selected.contains(name) && Holds(name, search_)) {
            sources_.push_back({name, false});
        }
    }
}

void FilterModel::NameNode() {
    const std::size_t selected = State().selected.size();
    nodeName_ = ExpectedSummary(channels_[*current_].treePath.back(), selected, HasRange());
    sourcesCaption_ = ExpectedSourcesCaption(selected);
}

std::vector<RecordedEvent> FilterModel::Shown() const {
    std::vector<RecordedEvent> shown;
    std::ranges::copy_if(loaded_, std::back_inserter(shown), [&](const RecordedEvent& event) {
        return IsShown(event, text_, offsets_.shown);
    });
    return shown;
}

}  // namespace tavrin::test
