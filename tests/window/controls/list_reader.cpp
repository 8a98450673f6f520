#include "window/controls/list_reader.h"

#include <algorithm>

namespace tavrin::test {
namespace {

// Layout of the remote memory: a message structure per column, then a text buffer per column.
constexpr std::size_t kStructureRoom = 128;
constexpr std::size_t kColumns = std::tuple_size_v<RowCells>;

constexpr std::size_t TextOffset(std::size_t column, std::size_t room) {
    return kColumns * kStructureRoom + column * room * sizeof(wchar_t);
}

}  // namespace

ListReader::ListReader(HANDLE process, HWND list)
    : list_(list), memory_(process, TextOffset(kColumns, kTextRoom)) {}

int ListReader::RowCount() const {
    return static_cast<int>(SendMessageW(list_, LVM_GETITEMCOUNT, 0, 0));
}

std::wstring ListReader::Cell(int row, int column) {
    LVITEMW item{};
    item.iSubItem = column;
    item.cchTextMax = static_cast<int>(kTextRoom);
    item.pszText = memory_.At<wchar_t*>(TextOffset(0, kTextRoom));
    memory_.Write(item);
    memory_.Write(L'\0', TextOffset(0, kTextRoom));  // the list leaves it for a row beyond the end
    SendMessageW(list_, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), memory_.At<LPARAM>(0));
    return memory_.ReadText(TextOffset(0, kTextRoom), kTextRoom);
}

RowCells ListReader::Row(int row) {
    // Small buffers let one read fetch the whole row.
    constexpr std::size_t kRoom = 160;
    for (std::size_t column = 0; column < kColumns; ++column) {
        LVITEMW item{};
        item.iSubItem = static_cast<int>(column);
        item.cchTextMax = static_cast<int>(kRoom);
        item.pszText = memory_.At<wchar_t*>(TextOffset(column, kRoom));
        memory_.Write(item, column * kStructureRoom);
        SendMessageW(list_, LVM_GETITEMTEXTW, static_cast<WPARAM>(row),
                     memory_.At<LPARAM>(column * kStructureRoom));
    }
    std::array<wchar_t, kColumns * kRoom> texts{};
    memory_.ReadBytes(texts.data(), sizeof(texts), TextOffset(0, kRoom));
    RowCells cells;
    for (std::size_t column = 0; column < kColumns; ++column) {
        const wchar_t* const text = texts.data() + column * kRoom;
        cells[column].assign(text, std::find(text, text + kRoom, L'\0'));
    }
    return cells;
}

int ListReader::Image(int row) {
    LVITEMW item{};
    item.mask = LVIF_IMAGE;
    item.iItem = row;
    memory_.Write(item);
    SendMessageW(list_, LVM_GETITEMW, 0, memory_.At<LPARAM>(0));
    return memory_.Read<LVITEMW>().iImage;
}

bool ListReader::IsSelected(int row) const {
    return SendMessageW(list_, LVM_GETITEMSTATE, static_cast<WPARAM>(row), LVIS_SELECTED) != 0;
}

bool ListReader::IsChecked(int row) const {
    return SendMessageW(list_, LVM_GETITEMSTATE, static_cast<WPARAM>(row), LVIS_STATEIMAGEMASK) ==
           INDEXTOSTATEIMAGEMASK(2);
}

std::vector<std::wstring> ListReader::FirstColumn() {
    std::vector<std::wstring> texts;
    for (int row = 0; row < RowCount(); ++row) {
        texts.push_back(Cell(row, 0));
    }
    return texts;
}

std::vector<ColumnFacts> ListReader::Columns() {
    const auto header = reinterpret_cast<HWND>(SendMessageW(list_, LVM_GETHEADER, 0, 0));
    const auto count = SendMessageW(header, HDM_GETITEMCOUNT, 0, 0);
    std::vector<ColumnFacts> columns;
    for (int index = 0; index < count; ++index) {
        LVCOLUMNW column{};
        column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
        column.pszText = memory_.At<wchar_t*>(TextOffset(0, kTextRoom));
        column.cchTextMax = static_cast<int>(kTextRoom);
        memory_.Write(column);
        SendMessageW(list_, LVM_GETCOLUMNW, static_cast<WPARAM>(index), memory_.At<LPARAM>(0));
        const auto answer = memory_.Read<LVCOLUMNW>();
        columns.push_back({memory_.ReadText(TextOffset(0, kTextRoom), kTextRoom), answer.cx,
                           answer.fmt & LVCFMT_JUSTIFYMASK});
    }
    return columns;
}

void ListReader::Select(int row) {
    Unselect();
    SetState(row, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
}

void ListReader::Unselect() {
    SetState(-1, 0, LVIS_SELECTED);
}

void ListReader::SetChecked(int row, bool checked) {
    SetState(row, INDEXTOSTATEIMAGEMASK(checked ? 2 : 1), LVIS_STATEIMAGEMASK);
}

void ListReader::EnsureVisible(int row) const {
    SendMessageW(list_, LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
}

RECT ListReader::RowRect(int row, int part) {
    memory_.Write(RECT{part, 0, 0, 0});
    SendMessageW(list_, LVM_GETITEMRECT, static_cast<WPARAM>(row), memory_.At<LPARAM>(0));
    RECT rect = memory_.Read<RECT>();
    MapWindowPoints(list_, nullptr, reinterpret_cast<POINT*>(&rect), 2);
    return rect;
}

void ListReader::SetState(int row, UINT state, UINT mask) {
    LVITEMW item{};
    item.state = state;
    item.stateMask = mask;
    memory_.Write(item);
    SendMessageW(list_, LVM_SETITEMSTATE, static_cast<WPARAM>(row), memory_.At<LPARAM>(0));
}

}  // namespace tavrin::test
