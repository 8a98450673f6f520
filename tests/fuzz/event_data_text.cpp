// Extracts event data from arbitrary text, which need not be well-formed XML.

#include "eventlog/details/event_data_text.h"

#include "input.h"

using namespace tavrin;
using fuzz::Require;

namespace {

constexpr std::wstring_view kCloseData = L"</Data>";

void CheckSection(std::wstring_view xml, const std::wstring& name) {
    const std::wstring open = L"<" + name + L">";
    const std::wstring close = L"</" + name + L">";
    const std::size_t begin = xml.find(open);
    const std::wstring_view section = eventlog::ExtractElementSection(xml, name);
    if (section.empty()) {
        Require(
            begin == std::wstring_view::npos || xml.find(close, begin) == std::wstring_view::npos,
            "an element that is there is found");
        return;
    }
    Require(section.data() == xml.data() + begin, "the section begins with the first open tag");
    Require(section.size() <= xml.size() - begin, "the section is inside the XML");
    Require(section.starts_with(open), "the section begins with its open tag");
    Require(xml.substr(begin + section.size()).starts_with(close), "the close tag follows");
    Require(section.find(close) == std::wstring_view::npos,
            "the section does not contain the close tag");
}

void CheckValues(std::wstring_view section) {
    const std::wstring text = eventlog::FormatDataValues(section);
    Require(text.size() <= section.size(), "only line feeds are added");
    Require(text.find(kCloseData) == std::wstring::npos, "no value contains a close tag");
    if (!text.empty()) {
        Require(text.ends_with(L'\n') && text.size() > 1, "a text ends in a line feed");
        const wchar_t last = text[text.size() - 2];
        Require(last != L'\n' && last != L'\r', "no value ends in a line break");
    }
    Require(text.empty() || section.find(kCloseData) != std::wstring_view::npos,
            "without a close tag there is no value");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    const std::wstring xml = fuzz::WideText(input.ConsumeRandomLengthString());
    const std::wstring name = fuzz::WideText(input.ConsumeRemainingBytesAsString());
    CheckSection(xml, name);
    CheckSection(xml, L"EventData");
    CheckValues(xml);
    CheckValues(eventlog::ExtractElementSection(xml, L"EventData"));
    return 0;
}
