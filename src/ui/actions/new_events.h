#pragma once

namespace tavrin::ui {

struct MainWindow;

// Shows a notice in the status bar if events have arrived that the shown channel's load did not
// read.
void ShowNewEventsNotice(MainWindow& window);

}  // namespace tavrin::ui
