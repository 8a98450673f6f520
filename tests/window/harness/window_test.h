#pragma once

#include <chrono>
#include <memory>

#include <gtest/gtest.h>

#include "window/harness/app_window.h"

namespace tavrin::test {

// Closes a window by its close box: the program ends at once, with exit code 0, and leaves no
// handle of the service open.
testing::AssertionResult ClosesCleanly(const AppWindow& app);

// The same of a program that is already closing, or has ended; the wait may take as long as the
// limit.
testing::AssertionResult HasEndedCleanly(const AppWindow& app,
                                         std::chrono::milliseconds limit = std::chrono::seconds(1));

// A test with a program of its own. At its end the program must close cleanly.
class WindowTest : public testing::Test {
protected:
    // Starts the program and waits for its tree.
    AppWindow& Start(const AppOptions& options = {});

    // Starts it without waiting for the tree.
    AppWindow& StartOnly(const AppOptions& options);

    void TearDown() override;

    std::unique_ptr<AppWindow> app_;
};

}  // namespace tavrin::test
