#include "window/controls/bar_readers.h"

#include <commctrl.h>

#include "window/controls/main_window_controls.h"
#include "window/controls/remote_memory.h"

namespace tavrin::test {

std::wstring StatusText(HANDLE process, HWND statusBar, int part) {
    const auto index = static_cast<WPARAM>(part);
    const std::size_t room = LOWORD(SendMessageW(statusBar, SB_GETTEXTLENGTHW, index, 0)) + 1u;
    RemoteMemory memory(process, room * sizeof(wchar_t));
    SendMessageW(statusBar, SB_GETTEXTW, index, memory.At<LPARAM>(0));
    return memory.ReadText(0, room);
}

std::vector<int> StatusEdges(HANDLE process, HWND statusBar) {
    const auto count = static_cast<std::size_t>(SendMessageW(statusBar, SB_GETPARTS, 0, 0));
    RemoteMemory memory(process, (count + 1) * sizeof(int));
    SendMessageW(statusBar, SB_GETPARTS, count, memory.At<LPARAM>(0));
    std::vector<int> edges(count);
    memory.ReadBytes(edges.data(), count * sizeof(int), 0);
    return edges;
}

std::optional<SYSTEMTIME> PickerTime(HANDLE process, HWND picker) {
    RemoteMemory memory(process, sizeof(SYSTEMTIME));
    if (SendMessageW(picker, DTM_GETSYSTEMTIME, 0, memory.At<LPARAM>(0)) != GDT_VALID) {
        return std::nullopt;
    }
    return memory.Read<SYSTEMTIME>();
}

std::vector<std::wstring> TabTitles(HANDLE process, HWND tab) {
    constexpr std::size_t kTextOffset = 128;
    constexpr std::size_t kTextRoom = 128;
    RemoteMemory memory(process, kTextOffset + kTextRoom * sizeof(wchar_t));
    std::vector<std::wstring> titles;
    const auto count = static_cast<WPARAM>(SendMessageW(tab, TCM_GETITEMCOUNT, 0, 0));
    for (WPARAM index = 0; index < count; ++index) {
        TCITEMW item{};
        item.mask = TCIF_TEXT;
        item.pszText = memory.At<wchar_t*>(kTextOffset);
        item.cchTextMax = static_cast<int>(kTextRoom);
        memory.Write(item);
        SendMessageW(tab, TCM_GETITEMW, index, memory.At<LPARAM>(0));
        titles.push_back(memory.ReadText(kTextOffset, kTextRoom));
    }
    return titles;
}

RECT TabDisplayRect(HANDLE process, HWND tab) {
    const SIZE client = ClientSize(tab);
    RemoteMemory memory(process, sizeof(RECT));
    memory.Write(RECT{0, 0, client.cx, client.cy});
    SendMessageW(tab, TCM_ADJUSTRECT, FALSE, memory.At<LPARAM>(0));
    return memory.Read<RECT>();
}

}  // namespace tavrin::test
