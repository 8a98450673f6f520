#pragma once

namespace tavrin::eventlog {
struct EventNode;
}

namespace tavrin::ui {

struct MainWindow;

// Makes the drain timer move this node's records into the rows.
void StartDraining(MainWindow& window, const eventlog::EventNode& node);

// A tick of the drain timer: moves the records that the loader added since the last tick into the
// rows. At the end of the load stops the timer and shows its failure, if any.
void DrainRecords(MainWindow& window);

}  // namespace tavrin::ui
