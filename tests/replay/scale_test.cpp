#include "event_log.h"
#include "test_recording.h"

#include <array>
#include <chrono>
#include <set>

namespace {

using namespace replay_test;

class Scale : public ReplayTest {
protected:
    void SetUp() override {
        ReplayTest::SetUp();
        ASSERT_TRUE(
            replay::Script(L"channel name=Big type=Operational events=1000000 providers=12 "
                           L"levels=1,2,3 rate=100"));
    }
};

TEST_F(Scale, RecordIdsRunFromOneToTheCount) {
    const Handle forward = Query(L"Big");
    const Handle reverse = Query(L"Big", L"*", kReverse);
    EXPECT_EQ(RecordId(NextEvent(forward)), 1u);
    EXPECT_EQ(RecordId(NextEvent(reverse)), 1'000'000u);
}

TEST_F(Scale, EventsFollowTheDeclaration) {
    std::set<std::wstring> providers;
    std::set<int> levels;
    const Handle results = Query(L"Big");
    ULONGLONG firstTime = 0;
    ULONGLONG lastTime = 0;
    for (int i = 0; i < 400; ++i) {
        const Handle event = NextEvent(results);
        const SystemValues values(event.get());
        providers.insert(values[EvtSystemProviderName].StringVal);
        levels.insert(values[EvtSystemLevel].ByteVal);
        lastTime = values[EvtSystemTimeCreated].FileTimeVal;
        if (i == 0)
            firstTime = lastTime;
    }
    EXPECT_EQ(providers.size(), 12u);
    EXPECT_EQ(levels, (std::set<int>{1, 2, 3}));
    EXPECT_EQ(lastTime - firstTime, 399u * 100'000u);
}

TEST_F(Scale, TheSameEventIsTheSameEachTime) {
    const wchar_t* query = L"*[System[EventRecordID=654321]]";
    const Handle first = NextEvent(Query(L"Big", query));
    const Handle second = NextEvent(Query(L"Big", query));
    EXPECT_FALSE(Render(first.get()).empty());
    EXPECT_EQ(Render(first.get()), Render(second.get()));
}

TEST_F(Scale, ValuesAndXmlAgree) {
    const Handle event = NextEvent(Query(L"Big", L"*[System[EventRecordID=77]]"));
    const SystemValues values(event.get());
    const std::wstring xml = Render(event.get());
    const auto contains = [&xml](const std::wstring& text) {
        return xml.find(text) != std::wstring::npos;
    };
    EXPECT_TRUE(contains(std::wstring(L"<Provider Name='") +
                         values[EvtSystemProviderName].StringVal + L"'/>"));
    EXPECT_TRUE(
        contains(L"<EventID>" + std::to_wstring(values[EvtSystemEventID].UInt16Val) + L"<"));
    EXPECT_TRUE(contains(L"<Level>" + std::to_wstring(values[EvtSystemLevel].ByteVal) + L"<"));
    EXPECT_TRUE(
        contains(L"ProcessID='" + std::to_wstring(values[EvtSystemProcessID].UInt32Val) + L"'"));
    EXPECT_TRUE(contains(L"<Channel>Big</Channel>"));
}

TEST_F(Scale, TwoMillionEventsIsTheMaximum) {
    ASSERT_TRUE(replay::Script(L"channel name=Huge events=9000000"));
    const Handle log(::EvtOpenLog(nullptr, L"Huge", EvtOpenChannelPath));
    EVT_VARIANT value{};
    DWORD used = 0;
    ASSERT_TRUE(::EvtGetLogInfo(log.get(), EvtLogNumberOfLogRecords, sizeof value, &value, &used));
    EXPECT_EQ(value.UInt64Val, 2'000'000u);
}

TEST_F(Scale, NewEventsFollowTheSyntheticOnes) {
    ASSERT_TRUE(replay::Do(L"arrive channel=Big"));
    EXPECT_EQ(RecordId(NextEvent(Query(L"Big", L"*", kReverse))), 1'000'001u);
}

// Records the time per event without a limit, because it depends on the machine.
TEST_F(Scale, AMillionEventsCanBeRead) {
    const Handle results = Query(L"Big", L"*", kReverse);
    const Handle context = SystemContext();
    std::array<EVT_HANDLE, 128> events{};
    alignas(EVT_VARIANT) char buffer[4096];
    unsigned long long rendered = 0;
    const auto begin = std::chrono::steady_clock::now();
    DWORD returned = 0;
    while (::EvtNext(results.get(), 128, events.data(), INFINITE, 0, &returned)) {
        for (DWORD i = 0; i < returned; ++i) {
            DWORD used = 0;
            DWORD count = 0;
            if (::EvtRender(context.get(), events[i], EvtRenderEventValues, sizeof buffer, buffer,
                            &used, &count))
                ++rendered;
            ::EvtClose(events[i]);
        }
    }
    const auto spent = std::chrono::steady_clock::now() - begin;
    EXPECT_EQ(rendered, 1'000'000u);
    RecordProperty(
        "NanosecondsPerEvent",
        static_cast<int>(std::chrono::duration_cast<std::chrono::nanoseconds>(spent).count() /
                         1'000'000));
}

}  // namespace
