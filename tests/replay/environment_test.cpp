#include "event_log.h"
#include "support/temp_folder.h"
#include "test_recording.h"

#include <gmock/gmock.h>

namespace {

using namespace replay_test;
using testing::HasSubstr;
using testing::StartsWith;

// The child processes. The tests below run each in a separate process with its own environment.
TEST(Child, DISABLED_ClosesEverything) {
    NextEvent(Query(L"Alpha"));
}

TEST(Child, DISABLED_LeavesAQueryAndAnEventOpen) {
    const EVT_HANDLE query = ::EvtQuery(nullptr, L"Alpha", L"*", kForward);
    EVT_HANDLE event = nullptr;
    DWORD returned = 0;
    ::EvtNext(query, 1, &event, INFINITE, 0, &returned);
}

TEST(Child, DISABLED_ClosesTwiceAndIsEndedByForce) {
    const EVT_HANDLE query = ::EvtQuery(nullptr, L"Alpha", L"*", kForward);
    ::EvtClose(query);
    ::EvtClose(query);
    ::TerminateProcess(::GetCurrentProcess(), 0);
}

TEST(Child, DISABLED_Watches) {
    const HANDLE signal = ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
    {
        const Handle subscription(
            ::EvtSubscribe(nullptr, signal, L"Alpha", L"*", nullptr, nullptr, nullptr, 1));
    }
    ::CloseHandle(signal);
}

class Environment : public testing::Test {
protected:
    void SetUp() override {
        recording.WriteEvents(L"Alpha", AlphaEvents());
        Set(L"TAVRIN_REPLAY_LOGS", recording.folder());
        Set(L"TAVRIN_REPLAY_REPORT", recording.folder() / "report.txt");
        Set(L"TAVRIN_REPLAY_CALLS", recording.folder() / "calls.txt");
    }
    void TearDown() override {
        for (const wchar_t* name : {L"TAVRIN_REPLAY_LOGS", L"TAVRIN_REPLAY_REPORT",
                                    L"TAVRIN_REPLAY_CALLS", L"TAVRIN_REPLAY_SCRIPT"})
            ::SetEnvironmentVariableW(name, nullptr);
    }
    static void Set(const wchar_t* name, const std::filesystem::path& value) {
        ::SetEnvironmentVariableW(name, value.wstring().c_str());
    }

    // Runs one of the children above in a new process and returns the report that it wrote.
    std::string Run(const std::wstring& child) const {
        wchar_t program[MAX_PATH];
        ::GetModuleFileNameW(nullptr, program, MAX_PATH);
        std::wstring command = std::wstring(L"\"") + program +
                               L"\" --gtest_also_run_disabled_tests --gtest_brief=1 "
                               L"--gtest_filter=Child.DISABLED_" +
                               child;
        STARTUPINFOW startup{};
        startup.cb = sizeof startup;
        PROCESS_INFORMATION process{};
        if (!::CreateProcessW(program, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                              &startup, &process))
            return "not started";
        const DWORD waited = ::WaitForSingleObject(process.hProcess, 20'000);
        ::CloseHandle(process.hThread);
        ::CloseHandle(process.hProcess);
        return waited == WAIT_OBJECT_0 ? Read("report.txt") : "still running";
    }
    std::string Read(const char* file) const {
        return tavrin::test::ReadFile(recording.folder() / file);
    }

    const tavrin::test::Recording recording{{{.name = L"Alpha"}}};
};

TEST_F(Environment, AProcessThatClosesEverythingIsClean) {
    EXPECT_EQ(Run(L"ClosesEverything"), "clean\n");
}

TEST_F(Environment, WhatWasLeftOpenIsReportedWithItsCall) {
    const std::string report = Run(L"LeavesAQueryAndAnEventOpen");
    EXPECT_THAT(report,
                HasSubstr("open: Query #1 from EvtQuery (call 1): Session=NULL, Path=\"Alpha\""));
    EXPECT_THAT(report, HasSubstr("open: 1 Event from EvtNext (call 2)"));
}

TEST_F(Environment, AMisuseIsReportedAtOnce) {
    EXPECT_THAT(Run(L"ClosesTwiceAndIsEndedByForce"),
                StartsWith("closed twice: #1 in EvtClose (call 3)"));
}

TEST_F(Environment, TheWatchingThreadDoesNotKeepTheProcessAlive) {
    EXPECT_EQ(Run(L"Watches"), "clean\n");
}

TEST_F(Environment, CallsAreWrittenOnePerLine) {
    Run(L"ClosesEverything");
    const std::string calls = Read("calls.txt");
    EXPECT_THAT(calls, StartsWith("1 "));
    EXPECT_THAT(
        calls,
        HasSubstr(
            ": EvtQuery(Session=NULL, Path=\"Alpha\", Query=\"*\", Flags=0x101) = #1, error 0\n"));
    EXPECT_THAT(
        calls,
        HasSubstr(": EvtNext(ResultSet=#1, EventArraySize=1, EventArray=set, Timeout=INFINITE, "
                  "Flags=0x0) = TRUE Returned=1, error 0\n"));
}

TEST_F(Environment, AScriptActsFromTheFirstCall) {
    tavrin::test::WriteFile(recording.folder() / "script.txt", "fail EvtQuery code=1722 call=1\n");
    Set(L"TAVRIN_REPLAY_SCRIPT", recording.folder() / "script.txt");
    Run(L"ClosesEverything");
    EXPECT_THAT(Read("calls.txt"), HasSubstr(" = NULL, error 1722\n"));
}

}  // namespace
