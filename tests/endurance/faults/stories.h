#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tavrin::test {

// What a user does, or what happens to the user.
enum class Action {
    Start,
    SelectSmallChannel,
    SelectLargeChannel,
    SelectEvent,  // Step::row in the event list
    SetAsFrom,    // the time of the selected row
    TickSource,   // Step::row in the sources list
    TypeFilterText,
    ScrollToEnd,
    Refresh,
    EventArrives,
};

inline constexpr wchar_t kTypedText[] = L"Error";

struct Step {
    Action action;
    int row = 0;
};

// A sequence of a user's actions.
struct Story {
    std::string name;
    std::vector<Step> before;                  // without a fault
    std::vector<Step> steps;                   // a call fails
    std::vector<Step> after = {};              // the window must still work
    std::vector<std::wstring> functions = {};  // that fail in turn; empty: all that are called
    bool isHasty = false;                      // closes the window without waiting for its reaction

    bool Has(Action action) const;
};

const std::vector<Story>& Stories();
const Story& StoryNamed(std::string_view name);

}  // namespace tavrin::test
