#include "base/xml_escape.h"

#include <string>

#include <gtest/gtest.h>

namespace tavrin::base {
namespace {

TEST(XmlEscape, WritesTheFiveCharactersOfMarkupAsEntities) {
    const struct {
        const wchar_t* text;
        const wchar_t* escaped;
    } cases[] = {
        {L"&", L"&amp;"},
        {L"<", L"&lt;"},
        {L">", L"&gt;"},
        {L"'", L"&apos;"},
        {L"\"", L"&quot;"},
        {L"", L""},
        {L"a&b<c", L"a&amp;b&lt;c"},
        {L"&amp;", L"&amp;amp;"},  // escaped again: no text counts as already escaped
    };
    for (const auto& [text, escaped] : cases) {
        EXPECT_EQ(XmlEscape(text), escaped);
    }
}

TEST(XmlEscape, CopiesEveryOtherCharacter) {
    std::wstring text;
    for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
        if (std::wstring_view(L"&<>'\"").find(static_cast<wchar_t>(unit)) ==
            std::wstring_view::npos) {
            text += static_cast<wchar_t>(unit);
        }
    }
    EXPECT_TRUE(XmlEscape(text) == text);
}

}  // namespace
}  // namespace tavrin::base
