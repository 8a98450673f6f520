#include "eventlog/details/event_data_text.h"

#include <string>

#include <gtest/gtest.h>

namespace tavrin::eventlog {
namespace {

TEST(ExtractElementSection, RunsFromTheOpenTagUpToTheCloseTag) {
    const struct {
        const wchar_t* xml;
        const wchar_t* section;
    } cases[] = {
        {L"<E><EventData><Data>x</Data></EventData></E>", L"<EventData><Data>x</Data>"},
        {L"<EventData></EventData>", L"<EventData>"},
        {L"<EventData>a</EventData><EventData>b</EventData>", L"<EventData>a"},
        {L"<EventData Name='n'><Data>x</Data></EventData>", L""},  // attributes
        {L"<EventData/>", L""},
        {L"<EventData ><Data>x</Data></EventData>", L""},
        {L"<EventData><Data>x</Data>", L""},              // not closed
        {L"</EventData><EventData><Data>x</Data>", L""},  // closed before it opens
        {L"<eventdata>x</eventdata>", L""},               // names are case-sensitive
        {L"<UserData>x</UserData>", L""},
        {L"", L""},
    };
    for (const auto& [xml, section] : cases) {
        EXPECT_EQ(std::wstring(ExtractElementSection(xml, L"EventData")), section)
            << testing::PrintToString(std::wstring(xml));
    }
}

TEST(FormatDataValues, WritesEachValueAndALineFeed) {
    const struct {
        const wchar_t* section;
        const wchar_t* text;
    } cases[] = {
        {L"<EventData><Data Name='a'>x</Data><Data Name='b'>y</Data>", L"x\ny\n"},
        {L"<EventData><Data>x</Data><Data>x</Data>", L"x\nx\n"},  // equal values both appear
        {L"", L""},
        {L"<EventData>", L""},
        {L"<EventData>text</EventData>", L""},
    };
    for (const auto& [section, text] : cases) {
        EXPECT_EQ(FormatDataValues(section), text) << testing::PrintToString(std::wstring(section));
    }
}

TEST(FormatDataValues, CutsTheLineBreaksAtTheEndOfAValue) {
    const struct {
        const wchar_t* section;
        const wchar_t* text;
    } cases[] = {
        {L"<Data>x\r\n</Data>", L"x\n"},
        {L"<Data>x\n\n\r\r\n</Data>", L"x\n"},
        {L"<Data>x\r\ny\r\n</Data>", L"x\r\ny\n"},  // line breaks inside stay
        {L"<Data>\r\nx</Data>", L"\r\nx\n"},
        {L"<Data>x \n</Data>", L"x \n"},  // blanks stay too
        {L"<Data> </Data>", L" \n"},
        {L"<Data></Data>", L""},  // an empty value writes no line
        {L"<Data>\r\n\r</Data>", L""},
        {L"<Data></Data><Data>y</Data>", L"y\n"},
    };
    for (const auto& [section, text] : cases) {
        EXPECT_EQ(FormatDataValues(section), text) << testing::PrintToString(std::wstring(section));
    }
}

TEST(FormatDataValues, TreatsASelfClosedElementAsAnOpenTag) {
    EXPECT_EQ(FormatDataValues(L"<EventData><Data Name='a'/><Data Name='b'>y</Data>"),
              L"<Data Name='b'>y\n");
    EXPECT_EQ(FormatDataValues(L"<Data Name='a'/>"), L"");
}

TEST(FormatDataValues, CopiesTheXmlAsItStands) {
    const struct {
        const wchar_t* section;
        const wchar_t* text;
    } cases[] = {
        {L"<Data>a &amp; b &lt;c&gt; &#65;</Data>", L"a &amp; b &lt;c&gt; &#65;\n"},
        {L"<Data><Inner>x</Inner></Data>", L"<Inner>x</Inner>\n"},
        {L"<DataX>x</Data>", L"x\n"},  // any name with this prefix
        {L"<DataItem a='1'>x</DataItem><Data>y</Data>", L"x</DataItem><Data>y\n"},
        {L"<data>x</data>", L""},
    };
    for (const auto& [section, text] : cases) {
        EXPECT_EQ(FormatDataValues(section), text) << testing::PrintToString(std::wstring(section));
    }
}

TEST(FormatDataValues, StopsAtAnUnclosedTag) {
    const struct {
        const wchar_t* section;
        const wchar_t* text;
    } cases[] = {
        {L"<Data>x</Data><Data", L"x\n"},
        {L"<Data>x</Data><Data Name='b'", L"x\n"},
        {L"<Data>x</Data><Data Name='b'>y", L"x\n"},
        {L"<Data>x</Data><Data Name='b'>y</Dat", L"x\n"},
        {L"<Data", L""},
    };
    for (const auto& [section, text] : cases) {
        EXPECT_EQ(FormatDataValues(section), text) << testing::PrintToString(std::wstring(section));
    }
}

}  // namespace
}  // namespace tavrin::eventlog
