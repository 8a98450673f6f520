#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "endurance/faults/expected_details.h"
#include "endurance/faults/expected_load.h"
#include "endurance/faults/expected_tree.h"
#include "endurance/faults/stories.h"
#include "endurance/faults/story_channels.h"
#include "window/filters/filter_expectations.h"

namespace tavrin::test {

// The texts around the list, by the name of the control.
using WindowTexts = std::map<std::string, std::wstring>;

// Returns the row of an event.
RowCells CellsOf(const RecordedEvent& event);

// Computes what the main window must show after each step of a story, from the recording and the
// fault. Makes the same calls as the program, in the same order, and counts them.
class ExpectedWindow {
public:
    explicit ExpectedWindow(const std::optional<Fault>& fault)
        : service_(fault), details_(service_) {}
    ExpectedWindow(const ExpectedWindow&) = delete;
    ExpectedWindow& operator=(const ExpectedWindow&) = delete;

    void Take(const Step& step);

    const std::vector<TreeLine>& tree() const { return tree_; }
    const std::vector<const RecordedEvent*>& rows() const { return rows_; }
    WindowTexts Texts() const;

    // The calls that the program must have made, except those of EvtClose.
    const CallCounts& calls() const { return service_.calls(); }

private:
    void Select(const StoryChannel& channel);
    void SelectEvent(int row);
    void FilterFrom(int row);
    void FilterBySource(int row);
    void FilterByText(const std::wstring& text);
    void StartLoad();
    void CountRecords();
    void Refill();

    FaultyService service_;
    ExpectedDetails details_;
    std::vector<TreeLine> tree_;
    const StoryChannel* channel_ = nullptr;
    ServerFilter filter_;
    std::wstring text_;
    std::optional<ExpectedLoad> load_;
    std::optional<std::size_t> total_;  // nullopt until counted
    std::set<std::wstring> knownSources_;
    std::vector<const RecordedEvent*> rows_;
    std::wstring statusText_;
    std::wstring detailsText_;
};

}  // namespace tavrin::test
