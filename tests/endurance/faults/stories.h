#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tavrin::test {

// What a user does, or meets.
enum class Deed {
    Start,
    SelectSmallChannel,
    SelectLargeChannel,
    SelectEvent,  // of a row
    SetAsFrom,    // the time of the selected row
    TickSource,   // of a row of the sources list
    TypeFilterText,
    ScrollToEnd,
    Refresh,
    EventArrives,
};

inline constexpr wchar_t kTypedText[] = L"Error";

struct Step {
    Deed deed;
    int row = 0;
};

// What becomes of a window while its user does one thing.
struct Story {
    std::string name;
    std::vector<Step> before;  // no call of these is made to fail
    std::vector<Step> steps;
    std::vector<Step> after = {};              // the window must still be of use
    std::vector<std::wstring> functions = {};  // those that matter; empty: all that are called
    bool isHasty = false;  // closes the window at once, instead of waiting for what it shows

    bool Has(Deed deed) const;
};

const std::vector<Story>& Stories();
const Story& StoryNamed(std::string_view name);

}  // namespace tavrin::test
