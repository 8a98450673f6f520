#pragma once

#include <windows.h>
#include <commctrl.h>

#include "query/filter_state.h"

namespace tavrin::ui {

struct MainWindow;

// Set up the panel's controls. Once each.
void SetUpSourcesSearch(MainWindow& window, HWND search);
void SetUpSourcesList(MainWindow& window, HWND list);

// Raises the panel's controls above their frame, empty and disabled.
void PrepareSourcesPanel(MainWindow& window);

// Empties and disables the panel, as for a folder.
void DisableSourcesPanel(MainWindow& window);

// Lists the current channel's sources, with those of the registry, and shows the filter summary.
// Each time a channel is shown.
void FillSourcesPanel(MainWindow& window);

// Adds the providers of records just loaded to the list.
void OfferSources(MainWindow& window, query::SourceSet providers);

// A row of the list changed: a tick chooses the source and restarts the timer that applies the
// filters.
void OnSourceItemChanged(MainWindow& window, const NMLISTVIEW& change);

// The search text changed: lists the matching names at once.
void OnSourcesSearchChanged(MainWindow& window);

// Unticks every source of the current channel.
void UntickAllSources(MainWindow& window);

}  // namespace tavrin::ui
