#include "ui/controls/event_list.h"

#include <algorithm>

#include "base/decimal_text.h"
#include "eventlog/loading/load_protocol.h"
#include "eventlog/records/event_record.h"
#include "resource.h"
#include "ui/controls/details_pane.h"
#include "ui/controls/header_pane.h"
#include "ui/controls/image_list.h"
#include "ui/controls/window_state.h"

namespace tavrin::ui {
namespace {

using eventlog::EventRecord;

constexpr std::uint8_t kErrorLevel = 2;
constexpr COLORREF kErrorText = RGB(0, 0, 0);
constexpr COLORREF kErrorBackground = 0xDCDCFF;

constexpr UINT kLevelIcons[] = {IDI_LEVEL_INFORMATION, IDI_LEVEL_WARNING, IDI_LEVEL_ERROR,
                                IDI_LEVEL_AUDIT_SUCCESS, IDI_LEVEL_AUDIT_FAILURE};

std::wstring LevelCell(const EventRecord& record) {
    return LevelName(record);
}
std::wstring TimeCell(const EventRecord& record) {
    return record.timeText;
}
std::wstring SourceCell(const EventRecord& record) {
    return record.source;
}
std::wstring EventIdCell(const EventRecord& record) {
    return base::DecimalText(record.eventId);
}
std::wstring ProcessIdCell(const EventRecord& record) {
    return record.processId;
}
std::wstring RecordIdCell(const EventRecord& record) {
    return base::DecimalText(record.recordId);
}

int ClientWidth(HWND window) {
    RECT client{};
    GetClientRect(window, &client);
    return client.right;
}

int ColumnWidth(int column, HWND list) {
    const int width = kColumns[static_cast<std::size_t>(column)].width;
    return width == kRestOfList ? LastColumnWidth(ClientWidth(list)) : width;
}

// Copies the cell into the control's buffer, truncated to its size.
void CopyCell(const std::wstring& cell, LVITEMW& item) {
    if (item.pszText != nullptr && item.cchTextMax > 0) {
        const std::size_t room = static_cast<std::size_t>(item.cchTextMax) - 1;
        item.pszText[cell.copy(item.pszText, room)] = L'\0';
    }
}

void OnGetDisplayInfo(const MainWindow& window, LVITEMW& item) {
    const EventRecord* const record = window.rows.Row(item.iItem);
    if (record == nullptr) {
        return;
    }
    if ((item.mask & LVIF_TEXT) != 0 && item.iSubItem >= 0 && item.iSubItem < kColumnCount) {
        CopyCell(kColumns[static_cast<std::size_t>(item.iSubItem)].cell(*record), item);
    }
    if ((item.mask & LVIF_IMAGE) != 0) {
        item.iImage = LevelImage(record->level).value_or(item.iImage);
    }
}

LRESULT OnCustomDraw(const MainWindow& window, NMLVCUSTOMDRAW& draw) {
    if (draw.nmcd.dwDrawStage == CDDS_PREPAINT) {
        return CDRF_NOTIFYITEMDRAW;
    }
    if (draw.nmcd.dwDrawStage != CDDS_ITEMPREPAINT) {
        return CDRF_DODEFAULT;
    }
    const EventRecord* const record =
        window.rows.Row(static_cast<std::int64_t>(draw.nmcd.dwItemSpec));
    if (record == nullptr || record->level != kErrorLevel) {
        return CDRF_DODEFAULT;
    }
    draw.clrText = kErrorText;
    draw.clrTextBk = kErrorBackground;
    return CDRF_NEWFONT;
}

// Neither a change of all rows (row -1) nor a change of focus, which repeats the selection, shows
// an event.
void OnItemChanged(const MainWindow& window, const NMLISTVIEW& change) {
    const bool selected = (change.uNewState & ~change.uOldState & LVIS_SELECTED) != 0;
    if ((change.uChanged & LVIF_STATE) == 0 || !selected) {
        return;
    }
    if (const EventRecord* const record = window.rows.Row(change.iItem)) {
        ShowEvent(window, *record);
    }
}

void OnCacheHint(const MainWindow& window, const NMLVCACHEHINT& hint) {
    if (window.ShowsChannel() &&
        eventlog::NearsEnd(hint.iTo, static_cast<std::int32_t>(window.rows.RowCount()))) {
        eventlog::ExtendLoad(*window.currentNode);
    }
}

}  // namespace

const std::array<Column, kColumnCount> kColumns = {{
    {L"Level", 120, LevelCell},
    {L"Date Time", 140, TimeCell},
    {L"Source", 200, SourceCell},
    {L"Event ID", 140, EventIdCell},
    {L"Process ID", 140, ProcessIdCell},
    {L"Record ID", kRestOfList, RecordIdCell},
}};

int LastColumnWidth(int listClientWidth) {
    return static_cast<std::int16_t>(listClientWidth - 600);
}

std::optional<int> LevelImage(std::uint8_t level) {
    switch (level) {
        case 0:
        case 4: return 0;
        case 3: return 1;
        case kErrorLevel: return 2;
        case 6: return 3;
        case 7: return 4;
        default: return std::nullopt;
    }
}

void SetUpEventList(MainWindow&, HWND list) {
    ListView_SetExtendedListViewStyle(
        list, LVS_EX_GRIDLINES | LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER);
    ListView_SetImageList(list, MakeIconList(kLevelIcons, ILC_COLOR32 | ILC_MASK, 4), LVSIL_SMALL);
}

void InsertColumns(HWND list, HFONT headerFont) {
    for (int i = 0; i < kColumnCount; ++i) {
        LVCOLUMNW column{};
        column.mask = LVCF_FMT | LVCF_WIDTH | LVCF_TEXT | LVCF_SUBITEM;
        column.fmt = LVCFMT_LEFT;
        column.cx = ColumnWidth(i, list);
        column.pszText = const_cast<wchar_t*>(kColumns[static_cast<std::size_t>(i)].title);
        column.iSubItem = i;
        ListView_InsertColumn(list, i, &column);
    }
    SendMessageW(ListView_GetHeader(list), WM_SETFONT, reinterpret_cast<WPARAM>(headerFont), TRUE);
}

void ResetColumnWidths(HWND list) {
    for (int i = 0; i < kColumnCount; ++i) {
        SendMessageW(list, LVM_SETCOLUMNWIDTH, static_cast<WPARAM>(i), ColumnWidth(i, list));
    }
}

void UpdateRowCount(MainWindow& window) {
    const std::size_t count = window.rows.RowCount();
    ListView_SetItemCountEx(window.controls.list, static_cast<int>(count), LVSICF_NOSCROLL);
    SetLoadedCount(window, count);
    window.shownRowCount = count;
}

int SelectedRow(HWND list) {
    return ListView_GetNextItem(list, -1, LVNI_SELECTED);
}

LRESULT OnEventListNotify(MainWindow& window, NMHDR& notification) {
    switch (notification.code) {
        case LVN_GETDISPINFOW:
            OnGetDisplayInfo(window, reinterpret_cast<NMLVDISPINFOW&>(notification).item);
            break;
        case NM_CUSTOMDRAW:
            return OnCustomDraw(window, reinterpret_cast<NMLVCUSTOMDRAW&>(notification));
        case LVN_ITEMCHANGED:
            OnItemChanged(window, reinterpret_cast<NMLISTVIEW&>(notification));
            break;
        case LVN_ODCACHEHINT:
            OnCacheHint(window, reinterpret_cast<NMLVCACHEHINT&>(notification));
            break;
        default: break;
    }
    return 0;
}

}  // namespace tavrin::ui
