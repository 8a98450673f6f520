#pragma once

namespace tavrin::eventlog {
struct EventNode;
}

namespace tavrin::ui {

struct MainWindow;

// Makes the drain timer move this node's records into the rows.
void StartDraining(MainWindow& window, const eventlog::EventNode& node);

// The drain timer's tick: moves what the loader added since the last tick into the rows. At the
// end of the load stops the timer and shows the failure of a load that failed.
void DrainRecords(MainWindow& window);

}  // namespace tavrin::ui
