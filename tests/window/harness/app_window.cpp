#include "window/harness/app_window.h"

#include <cwchar>
#include <iterator>
#include <stdexcept>

#include "support/wait_until.h"
#include "window/controls/input.h"

namespace tavrin::test {
namespace {

HWND RequireWindow(HWND window) {
    if (window == nullptr) {
        throw std::runtime_error("the program shows no main window");
    }
    return window;
}

}  // namespace

AppWindow::AppWindow(const AppOptions& options)
    : process_(options),
      window_(RequireWindow(process_.WaitForMainWindow())),
      controls_(FindControls(window_)),
      tree_(process_.handle(), controls_.tree),
      list_(process_.handle(), controls_.list),
      sources_(process_.handle(), controls_.sourcesList) {}

bool AppWindow::WaitForTree() const {
    return WaitUntil([&] { return tree_.ItemCount() > 0; });
}

bool AppWindow::SelectPath(const std::vector<std::wstring>& path) {
    const HTREEITEM item = tree_.Find(path);
    if (item == nullptr) {
        return false;
    }
    tree_.Select(item);
    return true;
}

bool AppWindow::WaitForRows(int rows) const {
    return WaitUntil([&] { return list_.RowCount() == rows; });
}

bool AppWindow::WaitForStatus(const std::wstring& text) const {
    return WaitUntil([&] { return Status() == text; });
}

std::wstring AppWindow::Status() const {
    return StatusText(process_.handle(), controls_.statusBar, 1);
}

std::optional<SYSTEMTIME> AppWindow::From() const {
    return PickerTime(process_.handle(), controls_.fromPicker);
}

std::optional<SYSTEMTIME> AppWindow::To() const {
    return PickerTime(process_.handle(), controls_.toPicker);
}

void AppWindow::TypeFilter(const std::wstring& text) const {
    BringToFront(window_);
    GiveFocus(controls_.filterEdit);
    PressWith(VK_CONTROL, 'A');
    PressKey(VK_DELETE);
    TypeText(text);
    WaitUntil([&] { return FilterText() == text; });
}

void AppWindow::Command(int id) const {
    PostMessageW(window_, WM_COMMAND, static_cast<WPARAM>(id), 0);
}

void AppWindow::Expire(Timer timer) const {
    SendMessageW(window_, WM_TIMER, static_cast<WPARAM>(timer), 0);
}

bool AppWindow::ResizeClient(int width, int height) const {
    RECT outer{};
    GetWindowRect(window_, &outer);
    const SIZE client = ClientSize(window_);
    SetWindowPos(window_, nullptr, 0, 0, outer.right - outer.left + width - client.cx,
                 outer.bottom - outer.top + height - client.cy,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    const auto fits = [&] {
        const SIZE now = ClientSize(window_);
        return now.cx == width && now.cy == height;
    };
    return WaitUntil(fits);
}

void AppWindow::Synchronise() const {
    SendMessageW(window_, WM_NULL, 0, 0);
}

void AppWindow::PostClose() const {
    PostMessageW(window_, WM_CLOSE, 0, 0);
}

std::wstring FormatCount(std::uint64_t number) {
    wchar_t decimal[8] = L"";
    wchar_t thousands[8] = L"";
    GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, decimal, 8);
    GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_STHOUSAND, thousands, 8);
    std::wstring digits = std::to_wstring(number);
    for (std::size_t end = digits.size(); end > 3; end -= 3) {
        digits.insert(end - 3, thousands);
    }
    return digits;
}

std::wstring LocalTimeText(const SYSTEMTIME& utc) {
    FILETIME utcTime{};
    FILETIME localTime{};
    SYSTEMTIME local{};
    SystemTimeToFileTime(&utc, &utcTime);
    FileTimeToLocalFileTime(&utcTime, &localTime);
    FileTimeToSystemTime(&localTime, &local);
    wchar_t text[32];
    std::swprintf(text, std::size(text), L"%02d/%02d/%02d %02d:%02d:%02d", local.wDay, local.wMonth,
                  local.wYear, local.wHour, local.wMinute, local.wSecond);
    return text;
}

}  // namespace tavrin::test
