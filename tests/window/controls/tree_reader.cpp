#include "window/controls/tree_reader.h"

namespace tavrin::test {
namespace {

constexpr std::size_t kTextOffset = 256;
constexpr std::size_t kTextRoom = 1024;

}  // namespace

TreeReader::TreeReader(HANDLE process, HWND tree)
    : tree_(tree), memory_(process, kTextOffset + kTextRoom * sizeof(wchar_t)) {}

int TreeReader::ItemCount() const {
    return static_cast<int>(SendMessageW(tree_, TVM_GETCOUNT, 0, 0));
}

std::vector<TreeEntry> TreeReader::Entries() {
    std::vector<TreeEntry> entries;
    for (HTREEITEM item = Root(); item != nullptr; item = Next(TVGN_NEXT, item)) {
        Collect(item, 0, entries);
    }
    return entries;
}

std::vector<TreeEntry> TreeReader::EntriesOf(HTREEITEM item) {
    std::vector<TreeEntry> entries;
    Collect(item, 0, entries);
    return entries;
}

HTREEITEM TreeReader::Find(const std::vector<std::wstring>& path) {
    HTREEITEM item = Root();
    for (const std::wstring& text : path) {
        item = Next(TVGN_CHILD, item);
        while (item != nullptr && Read(item).text != text) {
            item = Next(TVGN_NEXT, item);
        }
        if (item == nullptr) {
            return nullptr;
        }
    }
    return item;
}

HTREEITEM TreeReader::Root() const {
    return Next(TVGN_ROOT, nullptr);
}

HTREEITEM TreeReader::Selected() const {
    return Next(TVGN_CARET, nullptr);
}

TreeEntry TreeReader::Read(HTREEITEM item, int depth) {
    TVITEMW request{};
    request.mask =
        TVIF_HANDLE | TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_PARAM | TVIF_STATE;
    request.hItem = item;
    request.stateMask = TVIS_EXPANDED;
    request.pszText = memory_.At<wchar_t*>(kTextOffset);
    request.cchTextMax = static_cast<int>(kTextRoom);
    memory_.Write(request);
    SendMessageW(tree_, TVM_GETITEMW, 0, memory_.At<LPARAM>(0));
    const auto answer = memory_.Read<TVITEMW>();
    return {item,
            depth,
            memory_.ReadText(kTextOffset, kTextRoom),
            answer.iImage,
            answer.iSelectedImage,
            answer.lParam,
            (answer.state & TVIS_EXPANDED) != 0};
}

void TreeReader::Select(HTREEITEM item) const {
    SendMessageW(tree_, TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(item));
}

void TreeReader::SetData(HTREEITEM item, LPARAM data) {
    TVITEMW change{};
    change.mask = TVIF_HANDLE | TVIF_PARAM;
    change.hItem = item;
    change.lParam = data;
    memory_.Write(change);
    SendMessageW(tree_, TVM_SETITEMW, 0, memory_.At<LPARAM>(0));
}

void TreeReader::EnsureVisible(HTREEITEM item) const {
    SendMessageW(tree_, TVM_ENSUREVISIBLE, 0, reinterpret_cast<LPARAM>(item));
}

RECT TreeReader::TextRect(HTREEITEM item) {
    // TVM_GETITEMRECT reads the item from the memory into which it then writes the rectangle.
    memory_.Write(item);
    SendMessageW(tree_, TVM_GETITEMRECT, TRUE, memory_.At<LPARAM>(0));
    RECT rect = memory_.Read<RECT>();
    MapWindowPoints(tree_, nullptr, reinterpret_cast<POINT*>(&rect), 2);
    return rect;
}

HTREEITEM TreeReader::Next(UINT relation, HTREEITEM item) const {
    return reinterpret_cast<HTREEITEM>(
        SendMessageW(tree_, TVM_GETNEXTITEM, relation, reinterpret_cast<LPARAM>(item)));
}

void TreeReader::Collect(HTREEITEM item, int depth, std::vector<TreeEntry>& entries) {
    entries.push_back(Read(item, depth));
    for (HTREEITEM child = Next(TVGN_CHILD, item); child != nullptr;
         child = Next(TVGN_NEXT, child)) {
        Collect(child, depth + 1, entries);
    }
}

}  // namespace tavrin::test
