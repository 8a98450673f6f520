#pragma once

#include <cstdint>
#include <string>

#include <windows.h>

namespace tavrin::ui {

struct MainWindow;

// The class of the grey pane over the event list.
inline constexpr wchar_t kHeaderPaneClass[] = L"HeaderPane";
void RegisterHeaderPaneClass(HINSTANCE instance);

// Shows how many rows the event list has.
void SetLoadedCount(const MainWindow& window, std::uint64_t count);

// Shows how many records the channel's log holds.
void SetTotalCount(const MainWindow& window, std::uint64_t count);

// Labels the total: "In log" beside a filtered list, otherwise "Total".
void SetTotalCaption(const MainWindow& window, bool filtered);

// Shows a node's name.
void SetNodeName(const MainWindow& window, const std::wstring& name);

// Shows the current channel's name and what narrows its events.
void ShowFilterSummary(const MainWindow& window);

}  // namespace tavrin::ui
