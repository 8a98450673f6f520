#pragma once

namespace tavrin::ui {

struct MainWindow;

// Tells the user of events that the shown channel's last load did not read.
void ShowNewEventsNotice(MainWindow& window);

}  // namespace tavrin::ui
