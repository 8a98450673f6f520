#include "ui/controls/header_pane.h"

#include "base/unique_handle.h"
#include "query/filter_state.h"
#include "query/filter_summary.h"
#include "ui/controls/window_state.h"
#include "ui/rules/number_format.h"

namespace tavrin::ui {
namespace {

constexpr COLORREF kGround = 0xDCDCDC;
constexpr COLORREF kLabelText = RGB(0, 0, 0);

inline void DeleteBrushHandle(HBRUSH brush) noexcept {
    ::DeleteObject(brush);
}
using UniqueBrush = base::UniqueHandle<HBRUSH, DeleteBrushHandle>;

LRESULT OnPaint(HWND pane) {
    PAINTSTRUCT paint{};
    const HDC context = BeginPaint(pane, &paint);
    RECT client{};
    GetClientRect(pane, &client);
    const UniqueBrush brush(CreateSolidBrush(kGround));
    FillRect(context, &client, brush.get());
    EndPaint(pane, &paint);
    return 0;
}

// Makes the labels transparent.
LRESULT OnColorStatic(HDC context) {
    SetBkMode(context, TRANSPARENT);
    SetTextColor(context, kLabelText);
    return reinterpret_cast<LRESULT>(GetStockObject(NULL_BRUSH));
}

LRESULT CALLBACK HeaderPaneProc(HWND pane, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_PAINT: return OnPaint(pane);
        case WM_CTLCOLORSTATIC: return OnColorStatic(reinterpret_cast<HDC>(wParam));
        default: return DefWindowProcW(pane, message, wParam, lParam);
    }
}

void SetLabel(const MainWindow& window, HWND label, const std::wstring& text) {
    SetWindowTextW(label, text.c_str());
    InvalidateRect(window.controls.headerPane, nullptr, FALSE);
}

}  // namespace

void RegisterHeaderPaneClass(HINSTANCE instance) {
    WNDCLASSEXW description{};
    description.cbSize = sizeof(description);
    description.lpfnWndProc = HeaderPaneProc;
    description.hInstance = instance;
    description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    description.lpszClassName = kHeaderPaneClass;
    RegisterClassExW(&description);
}

void SetLoadedCount(const MainWindow& window, std::uint64_t count) {
    SetLabel(window, window.controls.loadedValue, FormatCount(count));
}

void SetTotalCount(const MainWindow& window, std::uint64_t count) {
    SetLabel(window, window.controls.totalValue, FormatCount(count));
}

void SetTotalCaption(const MainWindow& window, bool filtered) {
    SetLabel(window, window.controls.totalCaption, filtered ? L" In log: " : L" Total: ");
}

void SetNodeName(const MainWindow& window, const std::wstring& name) {
    SetLabel(window, window.controls.nodeName, name);
}

void ShowFilterSummary(const MainWindow& window) {
    const eventlog::EventNode& node = *window.currentNode;
    const auto filter = query::g_sourceFilterTable.find(&node);
    const std::size_t selected =
        filter == query::g_sourceFilterTable.end() ? 0 : filter->second.selectedSources.size();
    SetNodeName(window, query::FilterSummary(node.name, selected, query::g_timeRangeFilter));
}

}  // namespace tavrin::ui
