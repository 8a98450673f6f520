#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "window/filters/filter_expectations.h"

namespace tavrin::test {

// A channel of the recording and its place in the tree.
struct ModelChannel {
    std::wstring name;
    std::vector<std::wstring> treePath;
    std::vector<RecordedEvent> events;  // newest first
};

struct SourceRow {
    std::wstring name;
    bool isTicked = false;

    bool operator==(const SourceRow&) const = default;
};

// Everything in the main window that depends on the filters.
struct FilterView {
    std::vector<RowCells> rows;
    std::wstring loaded;
    std::wstring total;
    std::wstring totalCaption;
    std::wstring nodeName;
    std::wstring sourcesCaption;
    std::vector<SourceRow> sources;
    std::wstring status;
    std::wstring filterText;
    std::optional<LocalTime> from;
    std::optional<LocalTime> to;

    bool operator==(const FilterView&) const = default;
};

enum class Bound { From, To };

// Computes what the main window must show after each user action, from the recording. Settle()
// applies the filters that wait for their timer.
class FilterModel {
public:
    FilterModel(std::vector<ModelChannel> channels, ZoneOffsets offsets)
        : channels_(std::move(channels)), states_(channels_.size()), offsets_(offsets) {}

    void SelectChannel(std::size_t index);
    void SelectFolder(const std::wstring& name);
    void Type(const std::wstring& text) { text_ = text; }
    void Search(const std::wstring& text);
    void ToggleSource(std::size_t row);
    void ShowAllSources();
    void SetPicker(Bound bound, std::optional<LocalTime> time);
    void SetAs(Bound bound, std::size_t row);
    void Refresh();
    void Settle();

    const std::vector<ModelChannel>& channels() const { return channels_; }
    const std::optional<std::size_t>& current() const { return current_; }
    const std::optional<LocalTime>& picker(Bound bound) const {
        return bound == Bound::From ? from_ : to_;
    }
    bool isPending() const { return isPending_; }
    FilterView View() const;

    // The query of a channel's last load, or nullopt before the first one.
    std::optional<std::wstring> LastQuery(std::size_t index) const;

private:
    struct ChannelState {
        std::set<std::wstring> selected;
        std::set<std::wstring> known;
        std::optional<ServerFilter> applied;  // by the last load
    };

    ChannelState& State() { return states_[*current_]; }
    ServerFilter Wanted();
    bool HasRange() const { return storedFrom_ || storedUntil_; }
    UtcTime Utc(LocalTime local) const;
    void Apply();
    void ApplyAtOnce();
    void StartLoad();
    void RebuildSources();
    void NameNode();
    std::vector<RecordedEvent> Shown() const;

    std::vector<ModelChannel> channels_;
    std::vector<ChannelState> states_;
    ZoneOffsets offsets_;
    std::optional<std::size_t> current_;  // the selected channel; nullopt for a folder
    bool isPending_ = false;

    std::optional<LocalTime> from_;
    std::optional<LocalTime> to_;
    std::optional<UtcTime> storedFrom_;
    std::optional<UtcTime> storedUntil_;
    std::wstring text_;
    std::wstring search_;
    std::vector<SourceRow> sources_;

    std::vector<RecordedEvent> loaded_;
    std::size_t total_ = 0;
    std::wstring totalCaption_;
    std::wstring nodeName_;
    std::wstring sourcesCaption_;
    std::wstring status_;
};

}  // namespace tavrin::test
