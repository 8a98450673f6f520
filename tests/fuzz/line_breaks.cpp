// Converts the line breaks of arbitrary text for an edit control.

#include "ui/rules/line_breaks.h"

#include "input.h"

using namespace tavrin;
using fuzz::Require;

namespace {

// Replaces each line break with a line feed.
std::wstring WithLineFeeds(const std::wstring& text) {
    std::wstring result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != L'\r') {
            result += text[i];
        } else if (i + 1 == text.size() || text[i + 1] != L'\n') {
            result += L'\n';
        }
    }
    return result;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::wstring text = fuzz::WideText({reinterpret_cast<const char*>(data), size});
    const std::wstring paired = ui::WithLineBreakPairs(text);
    for (std::size_t i = 0; i < paired.size(); ++i) {
        Require(paired[i] != L'\r' || (i + 1 < paired.size() && paired[i + 1] == L'\n'),
                "a line feed follows each carriage return");
        Require(paired[i] != L'\n' || (i > 0 && paired[i - 1] == L'\r'),
                "a carriage return precedes each line feed");
    }
    Require(WithLineFeeds(paired) == WithLineFeeds(text), "the lines do not change");
    Require(ui::WithLineBreakPairs(paired) == paired, "pairs do not change");
    return 0;
}
