#include "window/filters/filter_driver.h"

#include <commctrl.h>

#include <cwchar>
#include <iterator>

#include "support/wait_until.h"
#include "window/controls/input.h"
#include "window/controls/top_windows.h"

namespace tavrin::test {
namespace {

// EvtQueryReverseDirection | EvtQueryChannelPath: only loads query with these flags.
constexpr wchar_t kLoadFlags[] = L"\", Flags=0x201)";

// Alternates between two places: two quick clicks at one place are a double click, which does not
// toggle a check box twice.
void ClickBox(POINT centre) {
    static LONG offset = 4;
    offset = -offset;
    ClickLeft({centre.x + offset, centre.y});
}

std::wstring Unescaped(const std::wstring& logged) {
    std::wstring text;
    for (std::size_t at = 0; at < logged.size(); ++at) {
        at += logged[at] == L'\\' ? 1u : 0u;
        text += logged[at];
    }
    return text;
}

bool Equal(const SYSTEMTIME& a, const SYSTEMTIME& b) {
    return a.wYear == b.wYear && a.wMonth == b.wMonth && a.wDay == b.wDay && a.wHour == b.wHour &&
           a.wMinute == b.wMinute && a.wSecond == b.wSecond;
}

}  // namespace

void FilterDriver::ClickPickerBox(HWND picker) const {
    RECT rect{};
    GetWindowRect(picker, &rect);
    ClickBox({rect.left + 10, (rect.top + rect.bottom) / 2});
}

void FilterDriver::ClickSource(int row) const {
    app_.sources().EnsureVisible(row);
    const RECT rect = app_.sources().RowRect(row, LVIR_BOUNDS);
    ClickBox({rect.left + 9, (rect.top + rect.bottom) / 2});
}

void FilterDriver::TypePickerTime(HWND picker, const SYSTEMTIME& time) const {
    RECT rect{};
    GetWindowRect(picker, &rect);
    ClickLeft({rect.left + 28, (rect.top + rect.bottom) / 2});  // on the day, the first field
    WaitUntil([&] { return FocusOf(picker) == picker; });
    const struct {
        const wchar_t* format;
        int number;
    } fields[] = {{L"%02d", time.wDay},  {L"%02d", time.wMonth},  {L"%04d", time.wYear},
                  {L"%02d", time.wHour}, {L"%02d", time.wMinute}, {L"%02d", time.wSecond}};
    for (const auto& field : fields) {
        wchar_t digits[8];
        std::swprintf(digits, std::size(digits), field.format, field.number);
        for (const wchar_t* digit = digits; *digit != L'\0'; ++digit) {
            PressKey(static_cast<WORD>(*digit));
        }
        PressKey(VK_RIGHT);
    }
    WaitUntil([&] {
        const auto now = TimeOf(picker);
        return now && Equal(*now, time);
    });
}

void FilterDriver::TypeSearch(const std::wstring& text) const {
    const HWND search = app_.controls().sourcesSearch;
    GiveFocus(search);
    PressWith(VK_CONTROL, 'A');
    PressKey(VK_DELETE);
    TypeText(text);
    WaitUntil([&] { return TextOf(search) == text; });
}

void FilterDriver::UseMenu(int row, MenuEntry entry) const {
    app_.list().EnsureVisible(row);
    RECT rect = app_.list().RowRect(row, LVIR_BOUNDS);
    rect.right = rect.left + 100;
    ClickLeft(CentreOf(rect));
    WaitUntil([&] { return app_.list().IsSelected(row); });
    ClickRight(CentreOf(rect));
    WaitForTopWindow(app_.process().id(), kPopupMenuClass);
    for (int step = 0; step <= static_cast<int>(entry); ++step) {
        PressKey(VK_DOWN);
    }
    PressKey(VK_RETURN);
    WaitForNoTopWindow(app_.process().id(), kPopupMenuClass);
}

void FilterDriver::ClickTree(const std::vector<std::wstring>& path) const {
    const HTREEITEM item = app_.tree().Find(path);
    app_.tree().EnsureVisible(item);
    ClickLeft(CentreOf(app_.tree().TextRect(item)));
    WaitUntil([&] { return app_.tree().Selected() == item; });
}

void FilterDriver::ClickShowAll() const {
    ClickLeft(CentreOf(app_.controls().showAllSources));
}

std::optional<SYSTEMTIME> FilterDriver::TimeOf(HWND picker) const {
    return picker == app_.controls().fromPicker ? app_.From() : app_.To();
}

std::vector<std::wstring> FilterDriver::Queries(const std::wstring& channel) const {
    static const std::wstring kStart = L", Query=\"";
    std::vector<std::wstring> queries;
    for (const std::wstring& call : app_.process().Calls()) {
        const std::size_t start = call.find(kStart);
        const std::size_t end = call.find(kLoadFlags);
        if (call.find(L": EvtQuery(") == std::wstring::npos || end == std::wstring::npos) {
            continue;
        }
        const std::wstring text =
            Unescaped(call.substr(start + kStart.size(), end - start - kStart.size()));
        if (call.find(L"Path=\"" + channel + L"\"") != std::wstring::npos ||
            text.find(L"<Query Id='0' Path='" + channel + L"'>") != std::wstring::npos) {
            queries.push_back(text);
        }
    }
    return queries;
}

}  // namespace tavrin::test
