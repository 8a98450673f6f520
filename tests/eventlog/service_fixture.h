#pragma once

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/recording.h"

namespace tavrin::eventlog {

// A test against the replay service, with a recording of its own. However it ends, it
// must leave no handle of the service open, closed twice or used after closing.
class ServiceTest : public testing::Test {
protected:
    ServiceTest();

    void TearDown() override;

    // Serves what was added to the recording, and begins to log calls.
    void Serve();

    // Takes up a script for the service's answers.
    static void Script(const std::wstring& lines);

    // The calls since they were last taken, as "EvtQuery(Session=NULL, ...)". Handles
    // are numbered anew, in the order in which they appear.
    static std::vector<std::wstring> TakeCalls();

    // Those of one function only.
    static std::vector<std::wstring> TakeCallsOf(const std::wstring& function);

    test::Recording recording_;
};

}  // namespace tavrin::eventlog
