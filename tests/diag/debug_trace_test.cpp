#include "diag/debug_trace.h"

#include <chrono>
#include <ios>
#include <locale>
#include <stdexcept>
#include <streambuf>
#include <string>
#include <thread>
#include <vector>

#include <windows.h>

#include <gtest/gtest.h>

#include "support/debug_output.h"
#include "support/trace_capture.h"

namespace tavrin::diag {
namespace {

// The line that DebugTrace writes for this thread and message.
std::wstring LineOf(DWORD threadId, const std::wstring& message) {
    return L"[Thread " + std::to_wstring(threadId) + L"] => " + message + L"\n";
}

TEST(DebugTrace, WritesAWideMessageWithPrefixAndLineFeedInOneWideCall) {
    const test::TraceCapture trace;

    DebugTrace(std::wstring(L"Loaded 250 events to channel: Application"));

    ASSERT_EQ(trace.Calls().size(), 1u);
    EXPECT_TRUE(trace.Calls()[0].wide);
    EXPECT_EQ(trace.Calls()[0].text,
              LineOf(GetCurrentThreadId(), L"Loaded 250 events to channel: Application"));
}

TEST(DebugTrace, WritesANarrowMessageWithPrefixAndLineFeedInOneNarrowCall) {
    const test::TraceCapture trace;

    DebugTrace(std::string("EvtOpenLog failed"));

    ASSERT_EQ(trace.Calls().size(), 1u);
    EXPECT_FALSE(trace.Calls()[0].wide);
    EXPECT_EQ(trace.Calls()[0].text, LineOf(GetCurrentThreadId(), L"EvtOpenLog failed"));
}

TEST(DebugTrace, LeavesTheMessageAsItIs) {
    const std::wstring messages[] = {
        L"",                           // only the prefix and the line feed
        L"ends in a line feed\n",      // a second one follows
        L"\n\nbegins with two",        //
        L"carriage return\r",          //
        L"  blanks  ",                 //
        L"100% %s %n",                 // not a format string
        L"\x65e5\x672c \xd83d\xde00",  // outside every 8-bit code page
    };
    for (const std::wstring& message : messages) {
        const test::TraceCapture trace;

        DebugTrace(message);

        ASSERT_EQ(trace.Calls().size(), 1u);
        EXPECT_EQ(trace.Calls()[0].text, LineOf(GetCurrentThreadId(), message));
    }
}

TEST(DebugTrace, NamesTheThreadThatCalls) {
    const test::TraceCapture trace;
    DWORD workerId = 0;

    DebugTrace(std::wstring(L"here"));
    std::thread([&workerId] {
        workerId = GetCurrentThreadId();
        DebugTrace(std::wstring(L"there"));
    }).join();

    ASSERT_EQ(trace.Calls().size(), 2u);
    EXPECT_NE(workerId, GetCurrentThreadId());
    EXPECT_EQ(trace.Calls()[0].text, LineOf(GetCurrentThreadId(), L"here"));
    EXPECT_EQ(trace.Calls()[1].text, LineOf(workerId, L"there"));
}

TEST(DebugTrace, KeepsALongMessageInOneCall) {
    const test::TraceCapture trace;
    const std::wstring message(20'000, L'x');

    DebugTrace(message);

    ASSERT_EQ(trace.Calls().size(), 1u);
    EXPECT_EQ(trace.Calls()[0].text, LineOf(GetCurrentThreadId(), message));
}

// Makes a stream fail when it writes a number: the returned iterator has no buffer.
template <typename Char>
class NoNumbers : public std::num_put<Char> {
    using Place = typename std::num_put<Char>::iter_type;
    Place do_put(Place, std::ios_base&, Char fill, unsigned long) const override {
        Place nowhere(static_cast<std::basic_streambuf<Char>*>(nullptr));
        *nowhere = fill;  // only a write tells Visual C++'s iterator that it failed
        return nowhere;
    }
};

class StreamsFail {
public:
    StreamsFail() {
        const std::locale wide(former_, new NoNumbers<wchar_t>);
        std::locale::global(std::locale(wide, new NoNumbers<char>));
    }
    ~StreamsFail() { std::locale::global(former_); }
    StreamsFail(const StreamsFail&) = delete;
    StreamsFail& operator=(const StreamsFail&) = delete;

private:
    std::locale former_;
};

TEST(DebugTrace, ThrowsWhenItsStreamFails) {
    const test::TraceCapture trace;
    const StreamsFail streams;

    EXPECT_THROW(DebugTrace(std::wstring(L"wide")), std::ios_base::failure);
    EXPECT_THROW(DebugTrace(std::string("narrow")), std::ios_base::failure);
    EXPECT_TRUE(trace.Calls().empty());
}

TEST(TraceException, WritesTheTextInOneNarrowLine) {
    const test::TraceCapture trace;

    TraceException(std::runtime_error("EvtOpenLog failed"));

    ASSERT_EQ(trace.Calls().size(), 1u);
    EXPECT_FALSE(trace.Calls()[0].wide);
    EXPECT_EQ(trace.Calls()[0].text, LineOf(GetCurrentThreadId(), L"EvtOpenLog failed"));
}

TEST(TraceException, DropsALineThatCannotBeBuilt) {
    const test::TraceCapture trace;
    const StreamsFail streams;

    TraceException(std::runtime_error("EvtOpenLog failed"));

    EXPECT_TRUE(trace.Calls().empty());
}

TEST(DebugTrace, ReachesADebugMonitor) {
    const test::DebugOutput monitor;
    const DWORD process = GetCurrentProcessId();

    DebugTrace(std::wstring(L"wide"));
    DebugTrace(std::string("narrow"));

    ASSERT_TRUE(monitor.WaitFor(process, L"narrow", std::chrono::seconds(10)));
    const std::vector<std::wstring> expected = {LineOf(GetCurrentThreadId(), L"wide"),
                                                LineOf(GetCurrentThreadId(), L"narrow")};
    EXPECT_EQ(monitor.Lines(process), expected);
}

}  // namespace
}  // namespace tavrin::diag
