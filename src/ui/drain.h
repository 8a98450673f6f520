#pragma once

namespace tavrin::eventlog {
struct EventNode;
}

namespace tavrin::ui {

struct MainWindow;

// From now on timer 1 moves this node's records into the rows.
void StartDraining(MainWindow& window, const eventlog::EventNode& node);

// Timer 1: moves what the loader added since the last tick; after the last of it,
// stops and shows the load's failure, if it failed.
void OnDrainTimer(MainWindow& window);

}  // namespace tavrin::ui
