#include "window/harness/window_test.h"

#include <string_view>

namespace tavrin::test {
namespace {

bool IsClean(std::wstring_view ledger) {
    while (!ledger.empty() && (ledger.back() == L'\n' || ledger.back() == L'\r')) {
        ledger.remove_suffix(1);
    }
    return ledger == L"clean";
}

}  // namespace

testing::AssertionResult HasEndedCleanly(const AppWindow& app, std::chrono::milliseconds limit) {
    const Ending ending = app.process().WaitForEnd(kPatience);
    if (!ending.ended) {
        return testing::AssertionFailure() << "the program did not end";
    }
    if (ending.exitCode != 0) {
        return testing::AssertionFailure() << "exit code " << ending.exitCode;
    }
    if (ending.took > limit) {
        return testing::AssertionFailure() << "ending took " << ending.took.count() << " ms";
    }
    const std::wstring ledger = app.process().Ledger();
    if (!IsClean(ledger)) {
        return testing::AssertionFailure() << "handles: " << ledger;
    }
    return testing::AssertionSuccess();
}

testing::AssertionResult ClosesCleanly(const AppWindow& app, std::chrono::milliseconds limit) {
    app.PostClose();
    return HasEndedCleanly(app, limit);
}

AppWindow& WindowTest::Start(const AppOptions& options) {
    StartOnly(options);
    EXPECT_TRUE(app_->WaitForTree());
    return *app_;
}

AppWindow& WindowTest::StartOnly(const AppOptions& options) {
    app_ = std::make_unique<AppWindow>(options);
    return *app_;
}

void WindowTest::TearDown() {
    if (!app_) {
        return;
    }
    if (app_->process().IsRunning()) {
        app_->PostClose();
    }
    EXPECT_TRUE(HasEndedCleanly(*app_));
}

}  // namespace tavrin::test
