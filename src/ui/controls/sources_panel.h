#pragma once

#include <windows.h>
#include <commctrl.h>

#include "query/filter_state.h"

namespace tavrin::ui {

struct MainWindow;

// Give the panel's controls what they need at the start. Once each.
void SetUpSourcesSearch(MainWindow& window, HWND search);
void SetUpSourcesList(MainWindow& window, HWND list);

// Brings the panel's controls above their frame, empty and disabled.
void PrepareSourcesPanel(MainWindow& window);

// For a folder: nothing to choose.
void DisableSourcesPanel(MainWindow& window);

// For the current channel, each time it is shown: offers its sources and names what is
// chosen.
void FillSourcesPanel(MainWindow& window);

// Offers providers of records that were just loaded.
void OfferSources(MainWindow& window, query::SourceSet providers);

// A row of the list changed: a tick chooses the source and restarts the timer that applies the
// filters.
void OnSourceItemChanged(MainWindow& window, const NMLISTVIEW& change);

// The search text changed: lists what it finds, at once.
void OnSourcesSearchChanged(MainWindow& window);

// Unticks every source of the current channel.
void UntickAllSources(MainWindow& window);

}  // namespace tavrin::ui
