#pragma once

#include <chrono>
#include <memory>

#include <gtest/gtest.h>

#include "support/wait_until.h"
#include "window/harness/app_window.h"

namespace tavrin::test {

// Closes the window. Checks that the program ends within `limit` with exit code 0 and leaves no
// service handle open.
testing::AssertionResult ClosesCleanly(const AppWindow& app,
                                       std::chrono::milliseconds limit = kPatience);

// Checks the same of a program that is closing or has ended.
testing::AssertionResult HasEndedCleanly(const AppWindow& app,
                                         std::chrono::milliseconds limit = kPatience);

// A test that starts the program. TearDown checks that the program closes cleanly, or has done so.
class WindowTest : public testing::Test {
protected:
    // Starts the program and waits for its tree.
    AppWindow& Start(const AppOptions& options = {});

    // Starts the program without waiting for its tree.
    AppWindow& StartOnly(const AppOptions& options);

    void TearDown() override;

    std::unique_ptr<AppWindow> app_;
};

}  // namespace tavrin::test
