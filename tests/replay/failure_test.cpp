#include "event_log.h"
#include "test_recording.h"

namespace {

using namespace replay_test;

using Failures = ReplayTest;

// One call of each function. Scripted failures precede the check of the arguments, so null will do.
struct ApiCall {
    const wchar_t* function;
    bool (*succeeds)();
};

constexpr ApiCall kCalls[] = {
    {L"EvtCancel", [] { return EvtCancel(nullptr) != FALSE; }},
    {L"EvtClose", [] { return EvtClose(nullptr) != FALSE; }},
    {L"EvtCreateBookmark", [] { return EvtCreateBookmark(nullptr) != nullptr; }},
    {L"EvtCreateRenderContext",
     [] { return EvtCreateRenderContext(0, nullptr, EvtRenderContextSystem) != nullptr; }},
    {L"EvtFormatMessage",
     [] {
         return EvtFormatMessage(nullptr, nullptr, 0, 0, nullptr, EvtFormatMessageEvent, 0, nullptr,
                                 nullptr) != FALSE;
     }},
    {L"EvtGetChannelConfigProperty",
     [] {
         return EvtGetChannelConfigProperty(nullptr, EvtChannelConfigType, 0, 0, nullptr,
                                            nullptr) != FALSE;
     }},
    {L"EvtGetLogInfo",
     [] { return EvtGetLogInfo(nullptr, EvtLogNumberOfLogRecords, 0, nullptr, nullptr) != FALSE; }},
    {L"EvtNext", [] { return EvtNext(nullptr, 0, nullptr, 0, 0, nullptr) != FALSE; }},
    {L"EvtNextChannelPath",
     [] { return EvtNextChannelPath(nullptr, 0, nullptr, nullptr) != FALSE; }},
    {L"EvtOpenChannelConfig", [] { return EvtOpenChannelConfig(nullptr, L"Alpha", 0) != nullptr; }},
    {L"EvtOpenChannelEnum", [] { return EvtOpenChannelEnum(nullptr, 0) != nullptr; }},
    {L"EvtOpenLog", [] { return EvtOpenLog(nullptr, L"Alpha", EvtOpenChannelPath) != nullptr; }},
    {L"EvtOpenPublisherMetadata",
     [] { return EvtOpenPublisherMetadata(nullptr, L"Alder", nullptr, 0, 0) != nullptr; }},
    {L"EvtQuery", [] { return EvtQuery(nullptr, L"Alpha", L"*", kForward) != nullptr; }},
    {L"EvtRender",
     [] { return EvtRender(nullptr, nullptr, 0, 0, nullptr, nullptr, nullptr) != FALSE; }},
    {L"EvtSeek", [] { return EvtSeek(nullptr, 0, nullptr, 0, EvtSeekRelativeToFirst) != FALSE; }},
    {L"EvtSubscribe",
     [] {
         return EvtSubscribe(nullptr, nullptr, L"Alpha", L"*", nullptr, nullptr, nullptr,
                             EvtSubscribeToFutureEvents) != nullptr;
     }},
    {L"EvtUpdateBookmark", [] { return EvtUpdateBookmark(nullptr, nullptr) != FALSE; }},
};

TEST_F(Failures, OfEveryFunctionMayHaveNoCode) {
    for (const ApiCall& call : kCalls) {
        ASSERT_TRUE(replay::Script(std::wstring(L"fail ") + call.function + L" code=0"));
        SetLastError(ERROR_GEN_FAILURE);
        EXPECT_FALSE(call.succeeds()) << testing::PrintToString(std::wstring(call.function));
        EXPECT_EQ(GetLastError(), DWORD{ERROR_SUCCESS})
            << testing::PrintToString(std::wstring(call.function));
    }
    EXPECT_EQ(replay::LedgerFaults(), std::vector<std::wstring>())
        << "a scripted failure must do nothing else";
}

TEST_F(Failures, AreLoggedAsSuchWithoutACode) {
    ASSERT_TRUE(replay::Script(L"fail EvtQuery code=0"));
    replay::StartCallLog();
    EvtQuery(nullptr, L"Alpha", L"*", kForward);
    const auto calls = replay::TakeCallLog();
    replay::StopCallLog();
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].result, L"NULL");
    EXPECT_EQ(calls[0].error, DWORD{ERROR_SUCCESS});
}

}  // namespace
