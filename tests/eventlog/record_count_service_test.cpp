#include "eventlog/loading/record_count.h"

#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

#include <windows.h>

#include <gtest/gtest.h>

#include "support/trace_capture.h"

#include "posted_messages.h"
#include "service_fixture.h"

namespace tavrin::eventlog {
namespace {

using Lines = std::vector<std::wstring>;

const HWND kWindow = reinterpret_cast<HWND>(std::uintptr_t{0x1234});
constexpr LPARAM kParameter = 0x5678;

class CountChannelRecordsTest : public ServiceTest {
protected:
    CountChannelRecordsTest() { recording_.AddChannel({.name = L"System"}); }

    void Count() { CountChannelRecords({L"System", kWindow, kParameter}); }

    PostedMessages posted_;
    test::TraceCapture trace_;
};

TEST_F(CountChannelRecordsTest, PostsTheCountWithTheRequestsParameter) {
    recording_.WriteEvents(L"System", test::Events(300));
    Serve();
    Count();

    EXPECT_EQ(posted_.Take(), (std::vector<PostedMessage>{{kWindow, 0x402, 300, kParameter}}));
    EXPECT_TRUE(trace_.NarrowMessages().empty());
}

TEST_F(CountChannelRecordsTest, PostsTheCountOfAnEmptyChannelToo) {
    Serve();
    Count();

    EXPECT_EQ(posted_.Take(), (std::vector<PostedMessage>{{kWindow, 0x402, 0, kParameter}}));
}

TEST_F(CountChannelRecordsTest, ReadsOneVariantOfTheLogAndClosesIt) {
    Serve();
    Count();

    EXPECT_EQ(TakeCalls(), (Lines{
                               L"EvtOpenLog(Session=NULL, Path=\"System\", Flags=0x1)",
                               L"EvtGetLogInfo(Log=#1, PropertyId=5, PropertyValueBufferSize=16, "
                               L"PropertyValueBuffer=set)",
                               L"EvtClose(Object=#1)",
                           }));
}

TEST_F(CountChannelRecordsTest, TracesAFailureAndPostsNothing) {
    const struct {
        const wchar_t* script;
        const wchar_t* line;
    } cases[] = {
        {L"fail EvtOpenLog code=5", L"EvtOpenLog failed"},
        {L"fail EvtGetLogInfo code=15007", L"EvtGetLogInfo failed"},
        {L"fail EvtGetLogInfo code=122", L"EvtGetLogInfo failed"},
        {L"type EvtGetLogInfo code=8", L"Unexpected variant type"},
        {L"type EvtGetLogInfo code=9", L"Unexpected variant type"},
    };
    Serve();
    Lines expected;
    for (const auto& [script, line] : cases) {
        Script(script);
        Count();

        expected.push_back(line);
        EXPECT_EQ(trace_.NarrowMessages(), expected);
        EXPECT_TRUE(posted_.Take().empty());
    }
    EXPECT_TRUE(trace_.WideMessages().empty());
}

}  // namespace
}  // namespace tavrin::eventlog
