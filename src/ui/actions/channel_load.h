#pragma once

#include <string>

namespace tavrin::ui {

struct MainWindow;

// What happens to the text in the filter edit when a channel is shown.
enum class FilterText { Clear, Keep };

// Shows the current channel's records. Loads the node first unless it holds them.
void StartLoad(MainWindow& window, FilterText filterText);

// Ends the activity of the current channel and reads the channel again with a query.
void StartReload(MainWindow& window, std::wstring query, FilterText filterText);

// Reads the current channel again and asks for its total again. Does nothing for a folder.
void Refresh(MainWindow& window);

}  // namespace tavrin::ui
