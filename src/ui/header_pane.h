#pragma once

#include <cstdint>
#include <string>

#include <windows.h>

namespace tavrin::ui {

struct MainWindow;

// The class of the pane over the event list, which paints its grey ground.
inline constexpr wchar_t kHeaderPaneClass[] = L"HeaderPane";
void RegisterHeaderPaneClass(HINSTANCE instance);

// Shows the number of rows, in the pane and in the list.
void SetLoadedCount(const MainWindow& window);

// Shows how many records the channel's log holds.
void SetTotalCount(const MainWindow& window, std::uint64_t count);

// Says what the total is: of the whole log beside a filtered list, or of the list.
void SetTotalCaption(const MainWindow& window, bool filtered);

// Names the node that is shown.
void SetNodeName(const MainWindow& window, const std::wstring& name);

}  // namespace tavrin::ui
