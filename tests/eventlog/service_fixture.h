#pragma once

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/recording.h"

namespace tavrin::eventlog {

// Runs a test against the replay service with its own recording. Fails the test if it leaves a
// handle of the service open, closes one twice or uses one after closing it.
class ServiceTest : public testing::Test {
protected:
    ServiceTest();

    void TearDown() override;

    // Makes the service read the recording and starts the call log.
    void Serve();

    // Replaces the script of the service.
    static void Script(const std::wstring& lines);

    // Returns the calls since the last TakeCalls, such as "EvtQuery(Session=NULL, ...)". Handles
    // are numbered from 1 in order of appearance.
    static std::vector<std::wstring> TakeCalls();

    // As TakeCalls, for one function.
    static std::vector<std::wstring> TakeCallsOf(const std::wstring& function);

    test::Recording recording_;
};

}  // namespace tavrin::eventlog
