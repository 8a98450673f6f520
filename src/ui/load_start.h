#pragma once

#include <string>

namespace tavrin::ui {

struct MainWindow;

// What becomes of the text in the filter edit when a channel is shown.
enum class FilterText { Clear, Keep };

// Shows the current channel: its records are taken from the node, which is loaded
// first unless it holds them already.
void StartLoad(MainWindow& window, FilterText filterText);

// Ends what goes on for the current channel and reads it again with a query.
void StartReload(MainWindow& window, std::wstring query, FilterText filterText);

// Reads the current channel again, and asks for its total again. Nothing for a folder.
void Refresh(MainWindow& window);

}  // namespace tavrin::ui
