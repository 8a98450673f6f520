#include "endurance/faults/stories.h"

#include <algorithm>

namespace tavrin::test {
namespace {

using enum Action;

// Three quarters down the small channel, so that the filter leaves two pages.
constexpr int kFromRow = 150;

}  // namespace

bool Story::Has(Action action) const {
    return std::ranges::count(before, action, &Step::action) > 0 ||
           std::ranges::count(steps, action, &Step::action) > 0;
}

const std::vector<Story>& Stories() {
    static const std::vector<Story> stories = {
        {.name = "Start", .before = {}, .steps = {{Start}}},
        {.name = "SelectChannel",
         .before = {{Start}},
         .steps = {{SelectSmallChannel}},
         .after = {{Refresh}}},
        // An event with a message, one without, and one whose provider is not registered.
        {.name = "SelectEvent",
         .before = {{Start}, {SelectSmallChannel}},
         .steps = {{SelectEvent, 0}, {SelectEvent, 1}, {SelectEvent, 2}}},
        {.name = "FilterByTime",
         .before = {{Start}, {SelectSmallChannel}, {SelectEvent, kFromRow}},
         .steps = {{SetAsFrom, kFromRow}}},
        {.name = "FilterBySource",
         .before = {{Start}, {SelectSmallChannel}},
         .steps = {{TickSource, 0}}},
        {.name = "FilterByText",
         .before = {{Start}, {SelectLargeChannel}},
         .steps = {{TypeFilterText}}},
        {.name = "ScrollToEnd",
         .before = {{Start}, {SelectLargeChannel}},
         .steps = {{ScrollToEnd}}},
        {.name = "Refresh", .before = {{Start}, {SelectSmallChannel}}, .steps = {{Refresh}}},
        {.name = "NewEvent",
         .before = {{Start}},
         .steps = {{SelectSmallChannel}, {EventArrives}},
         .functions = {L"EvtSubscribe", L"EvtNext", L"EvtQuery", L"EvtSeek"}},
        {.name = "CloseAtOnce",
         .before = {{Start}},
         .steps = {{SelectSmallChannel}},
         .isHasty = true},
    };
    return stories;
}

const Story& StoryNamed(std::string_view name) {
    return *std::ranges::find(Stories(), name, &Story::name);
}

}  // namespace tavrin::test
