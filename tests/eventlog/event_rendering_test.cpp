#include "eventlog/records/event_rendering.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <deque>
#include <stdexcept>
#include <string>
#include <vector>

#include <windows.h>
#include <winevt.h>

#include <gtest/gtest.h>

#include "eventlog/records/event_record.h"
#include "support/fresh_thread.h"
#include "support/import_patch.h"
#include "support/message_of.h"

namespace tavrin::eventlog {
namespace {

const EVT_HANDLE kContext = reinterpret_cast<EVT_HANDLE>(std::uintptr_t{0x10});
const EVT_HANDLE kEvent = reinterpret_cast<EVT_HANDLE>(std::uintptr_t{0x20});

// The patched EvtRender's answer to one call.
struct RenderAnswer {
    DWORD error = ERROR_SUCCESS;
    DWORD needed = 0;  // bytes; only with ERROR_INSUFFICIENT_BUFFER
    bool failsWithoutCode = false;

    std::wstring provider = L"Acme-Foo";
    bool hasProvider = true;
    std::uint16_t eventId = 42;
    std::uint8_t level = 4;
    bool hasLevel = true;
    std::uint64_t keywords = 0x8000000000000000;
    std::uint64_t time = 0;
    std::uint64_t recordId = 7;
    std::uint32_t processId = 4711;
};

struct RenderCall {
    EVT_HANDLE context;
    EVT_HANDLE event;
    DWORD flags;
    DWORD size;

    bool operator==(const RenderCall&) const = default;
};

// What the patched functions return and what they saw.
struct Service {
    bool givesContext = true;
    int contextsAsked = 0;
    bool contextAskedRightly = true;
    int contextsClosed = 0;
    std::deque<RenderAnswer> answers;
    std::vector<RenderCall> renders;
    std::vector<BYTE> firstBuffer;  // its contents at the first render
};
Service g_service;

EVT_HANDLE WINAPI CreateRenderContext(DWORD count, LPCWSTR* paths, DWORD flags) {
    ++g_service.contextsAsked;
    g_service.contextAskedRightly =
        g_service.contextAskedRightly && count == 0 && paths == nullptr && flags == 1;
    SetLastError(ERROR_OUTOFMEMORY);
    return g_service.givesContext ? kContext : nullptr;
}

BOOL WINAPI Close(EVT_HANDLE handle) {
    g_service.contextsClosed += handle == kContext;
    EXPECT_EQ(handle, kContext) << "the caller must close the event";
    return TRUE;
}

void FillValues(const RenderAnswer& answer, void* buffer) {
    auto* const values = static_cast<EVT_VARIANT*>(buffer);
    std::fill_n(values, EvtSystemPropertyIdEND, EVT_VARIANT{});
    if (answer.hasProvider) {
        auto* const name = reinterpret_cast<wchar_t*>(values + EvtSystemPropertyIdEND);
        std::memcpy(name, answer.provider.c_str(), (answer.provider.size() + 1) * sizeof(wchar_t));
        values[EvtSystemProviderName].Type = EvtVarTypeString;
        values[EvtSystemProviderName].StringVal = name;
    }
    values[EvtSystemEventID].Type = EvtVarTypeUInt16;
    values[EvtSystemEventID].UInt16Val = answer.eventId;
    values[EvtSystemLevel].Type = answer.hasLevel ? EvtVarTypeByte : EvtVarTypeNull;
    values[EvtSystemLevel].ByteVal = answer.level;
    values[EvtSystemKeywords].Type = EvtVarTypeHexInt64;
    values[EvtSystemKeywords].UInt64Val = answer.keywords;
    values[EvtSystemTimeCreated].Type = EvtVarTypeFileTime;
    values[EvtSystemTimeCreated].FileTimeVal = answer.time;
    values[EvtSystemEventRecordId].Type = EvtVarTypeUInt64;
    values[EvtSystemEventRecordId].UInt64Val = answer.recordId;
    values[EvtSystemProcessID].Type = EvtVarTypeUInt32;
    values[EvtSystemProcessID].UInt32Val = answer.processId;
}

BOOL WINAPI Render(EVT_HANDLE context, EVT_HANDLE event, DWORD flags, DWORD size, PVOID buffer,
                   PDWORD used, PDWORD count) {
    if (g_service.renders.empty()) {
        const auto* const bytes = static_cast<const BYTE*>(buffer);
        g_service.firstBuffer.assign(bytes, bytes + size);
    }
    g_service.renders.push_back({context, event, flags, size});
    RenderAnswer answer;
    if (!g_service.answers.empty()) {
        answer = g_service.answers.front();
        g_service.answers.pop_front();
    }
    *used = answer.needed;
    *count = 0;
    if (answer.error != ERROR_SUCCESS || answer.failsWithoutCode) {
        SetLastError(answer.error);
        return FALSE;
    }
    FillValues(answer, buffer);
    *count = EvtSystemPropertyIdEND;
    return TRUE;
}

// Each test renders on a fresh thread because render state is per thread.
class RenderEventRecordTest : public testing::Test {
protected:
    RenderEventRecordTest() { g_service = Service(); }

    // Renders one event for each answer, on a fresh thread.
    void RenderAll() {
        test::OnFreshThread([this] {
            for (std::size_t n = g_service.answers.size(); n > 0; --n) {
                statuses_.push_back(RenderEventRecord(kEvent, records_));
            }
        });
    }

    EventRecordList records_;
    std::vector<std::uint32_t> statuses_;

private:
    test::ImportPatch<decltype(EvtCreateRenderContext)> createContext_{"EvtCreateRenderContext",
                                                                       CreateRenderContext};
    test::ImportPatch<decltype(EvtRender)> render_{"EvtRender", Render};
    test::ImportPatch<decltype(EvtClose)> close_{"EvtClose", Close};
};

TEST_F(RenderEventRecordTest, MakesARecordFromTheSystemValues) {
    g_service.answers = {{.provider = L"Acme-Foo",
                          .eventId = 65535,
                          .level = 2,
                          .keywords = 0x8080000000000000,
                          .recordId = 0x123456789ABCDEF0,
                          .processId = 4294967295}};
    RenderAll();

    EXPECT_EQ(statuses_, std::vector<std::uint32_t>{0});
    ASSERT_EQ(records_.size(), 1u);
    const EventRecord& record = *records_[0];
    EXPECT_EQ(std::wstring(record.providerName), L"Acme-Foo");
    EXPECT_EQ(record.source, L"Foo");
    EXPECT_EQ(record.eventId, 65535u);
    EXPECT_EQ(record.level, 2u);
    EXPECT_EQ(record.keywords, 0x8080000000000000u);
    EXPECT_EQ(record.recordId, 0x123456789ABCDEF0u);
    EXPECT_EQ(record.processId, L"4294967295");
}

TEST_F(RenderEventRecordTest, AppendsAfterTheListsRecords) {
    g_service.answers = {{.recordId = 1}, {.recordId = 2}, {.recordId = 3}};
    RenderAll();

    ASSERT_EQ(records_.size(), 3u);
    EXPECT_EQ(records_[0]->recordId, 1u);
    EXPECT_EQ(records_[1]->recordId, 2u);
    EXPECT_EQ(records_[2]->recordId, 3u);
}

TEST_F(RenderEventRecordTest, CreatesOneSystemContextPerThreadAndClosesItWhenTheThreadEnds) {
    test::OnFreshThread([this] {
        static_cast<void>(RenderEventRecord(kEvent, records_));
        static_cast<void>(RenderEventRecord(kEvent, records_));
        EXPECT_EQ(g_service.contextsClosed, 0);
    });

    EXPECT_EQ(g_service.contextsAsked, 1);
    EXPECT_TRUE(g_service.contextAskedRightly);
    EXPECT_EQ(g_service.contextsClosed, 1);

    test::OnFreshThread([this] { static_cast<void>(RenderEventRecord(kEvent, records_)); });

    EXPECT_EQ(g_service.contextsAsked, 2);
    EXPECT_EQ(g_service.contextsClosed, 2);
}

TEST_F(RenderEventRecordTest, RendersOnceIntoTheWholeZeroedBuffer) {
    g_service.answers = {{}};
    RenderAll();

    EXPECT_EQ(g_service.renders, (std::vector<RenderCall>{{kContext, kEvent, 0, 4096}}));
    EXPECT_EQ(g_service.firstBuffer, std::vector<BYTE>(4096));
}

TEST_F(RenderEventRecordTest, WithoutAContextEveryRenderOfTheThreadFailsAtOnce) {
    g_service.givesContext = false;
    test::OnFreshThread([this] {
        for (int i = 0; i < 3; ++i) {
            EXPECT_EQ(test::MessageOf<std::runtime_error>(
                          [this] { static_cast<void>(RenderEventRecord(kEvent, records_)); }),
                      "EvtCreateRenderContext failed");
        }
    });

    EXPECT_EQ(g_service.contextsAsked, 1);
    EXPECT_TRUE(g_service.renders.empty());
    EXPECT_TRUE(records_.empty());
}

TEST_F(RenderEventRecordTest, ATooSmallBufferGrowsToTheReportedSizeForOneMoreCall) {
    g_service.answers = {{.error = ERROR_INSUFFICIENT_BUFFER, .needed = 9000}, {.recordId = 5}};
    test::OnFreshThread([this] { statuses_.push_back(RenderEventRecord(kEvent, records_)); });

    EXPECT_EQ(g_service.renders,
              (std::vector<RenderCall>{{kContext, kEvent, 0, 4096}, {kContext, kEvent, 0, 9000}}));
    EXPECT_EQ(statuses_, std::vector<std::uint32_t>{122});
    ASSERT_EQ(records_.size(), 1u);
    EXPECT_EQ(records_[0]->recordId, 5u);
}

TEST_F(RenderEventRecordTest, TheBufferIsNeverShrunk) {
    g_service.answers = {{.error = ERROR_INSUFFICIENT_BUFFER, .needed = 9000}, {}, {}};
    test::OnFreshThread([this] {
        statuses_.push_back(RenderEventRecord(kEvent, records_));
        statuses_.push_back(RenderEventRecord(kEvent, records_));
    });

    EXPECT_EQ(statuses_, (std::vector<std::uint32_t>{122, 0}));
    ASSERT_EQ(g_service.renders.size(), 3u);
    EXPECT_EQ(g_service.renders[2].size, 9000u);
}

TEST_F(RenderEventRecordTest, AFailingRetryIsAnErrorWithItsCodeAndAppendsNothing) {
    g_service.answers = {
        {.error = ERROR_INSUFFICIENT_BUFFER, .needed = 9000}, {.error = 1722}, {.recordId = 8}};
    test::OnFreshThread([this] {
        EXPECT_EQ(test::MessageOf<std::runtime_error>(
                      [this] { static_cast<void>(RenderEventRecord(kEvent, records_)); }),
                  "EvtRender failed: 1722");
        EXPECT_TRUE(records_.empty());
        statuses_.push_back(RenderEventRecord(kEvent, records_));
    });

    ASSERT_EQ(g_service.renders.size(), 3u);
    EXPECT_EQ(g_service.renders[2].size, 9000u) << "the larger buffer must be kept";
    ASSERT_EQ(records_.size(), 1u);
    EXPECT_EQ(records_[0]->recordId, 8u);
}

TEST_F(RenderEventRecordTest, AFailingRetryWithoutACodeIsAnErrorLikeAnyOther) {
    g_service.answers = {{.error = ERROR_INSUFFICIENT_BUFFER, .needed = 9000},
                         {.failsWithoutCode = true}};
    test::OnFreshThread([this] {
        EXPECT_EQ(test::MessageOf<std::runtime_error>(
                      [this] { static_cast<void>(RenderEventRecord(kEvent, records_)); }),
                  "EvtRender failed: 0");
    });

    EXPECT_TRUE(records_.empty());
}

TEST_F(RenderEventRecordTest, AnyOtherFailureRepeatsThePreviousValues) {
    g_service.answers = {{.provider = L"Earlier", .recordId = 9}, {.error = 5}};
    RenderAll();

    EXPECT_EQ(statuses_, (std::vector<std::uint32_t>{0, 5}));
    ASSERT_EQ(records_.size(), 2u);
    EXPECT_EQ(records_[1]->recordId, 9u);
    EXPECT_EQ(std::wstring(records_[1]->providerName), L"Earlier");
    EXPECT_EQ(g_service.renders.size(), 2u);
}

TEST_F(RenderEventRecordTest, AFailingFirstRenderOfAThreadMakesAnEmptyRecord) {
    g_service.answers = {{.error = 5}};
    RenderAll();

    EXPECT_EQ(statuses_, std::vector<std::uint32_t>{5});
    ASSERT_EQ(records_.size(), 1u);
    EXPECT_EQ(std::wstring(records_[0]->providerName), L"");
    EXPECT_EQ(records_[0]->source, L"");
    EXPECT_EQ(records_[0]->recordId, 0u);
    EXPECT_EQ(records_[0]->processId, L"0");
}

// The previous event's values point into the buffer that was freed when the larger one was
// allocated. Their strings must be neither read nor freed again.
TEST_F(RenderEventRecordTest, AFailureAfterTheBufferGrewMakesAnEmptyRecord) {
    g_service.answers = {{.provider = L"Earlier", .recordId = 9},
                         {.error = ERROR_INSUFFICIENT_BUFFER, .needed = 9000},
                         {.error = 1722},
                         {.error = 5}};
    test::OnFreshThread([this] {
        static_cast<void>(RenderEventRecord(kEvent, records_));
        EXPECT_THROW(static_cast<void>(RenderEventRecord(kEvent, records_)), std::runtime_error);
        statuses_.push_back(RenderEventRecord(kEvent, records_));
    });

    EXPECT_EQ(statuses_, std::vector<std::uint32_t>{5});
    ASSERT_EQ(records_.size(), 2u);
    EXPECT_EQ(std::wstring(records_[1]->providerName), L"");
    EXPECT_EQ(records_[1]->recordId, 0u);
}

TEST_F(RenderEventRecordTest, AnAbsentProviderNameIsEmpty) {
    g_service.answers = {{.hasProvider = false}};
    RenderAll();

    ASSERT_EQ(records_.size(), 1u);
    EXPECT_EQ(std::wstring(records_[0]->providerName), L"");
    EXPECT_EQ(records_[0]->source, L"");
}

TEST_F(RenderEventRecordTest, MakesTheSourceOfTheWholeProviderNameAndCutsOnlyTheName) {
    const std::wstring longName = std::wstring(130, L'p') + L"-End";
    g_service.answers = {{.provider = longName}};
    RenderAll();

    ASSERT_EQ(records_.size(), 1u);
    EXPECT_EQ(std::wstring(records_[0]->providerName), longName.substr(0, 127));
    EXPECT_EQ(records_[0]->source, L"End");
}

TEST_F(RenderEventRecordTest, TakesTheLevelFromTheKeywordsWhereThereIsNone) {
    g_service.answers = {
        {.level = 0, .keywords = 0x8020000000000000},
        {.level = 0, .keywords = 0x8010000000000000},
        {.level = 3, .hasLevel = false, .keywords = 0x8010000000000000},
        {.level = 3, .hasLevel = false, .keywords = 0},
        {.level = 16, .keywords = 0x8020000000000000},
    };
    RenderAll();

    std::vector<int> levels;
    for (const EventRecordPtr& record : records_) {
        levels.push_back(record->level);
    }
    EXPECT_EQ(levels, (std::vector<int>{6, 7, 7, 0, 16}));
}

// 5 March 2024 07:09:03.999, local time.
constexpr SYSTEMTIME kLocalFields{2024, 3, 2, 5, 7, 9, 3, 999};

std::uint64_t UtcOf(const SYSTEMTIME& localFields) {
    FILETIME local{};
    FILETIME utc{};
    SystemTimeToFileTime(&localFields, &local);
    LocalFileTimeToFileTime(&local, &utc);
    return std::uint64_t{utc.dwHighDateTime} << 32 | utc.dwLowDateTime;
}

TEST_F(RenderEventRecordTest, ShowsTheTimeInLocalTimeWithoutMilliseconds) {
    g_service.answers = {{.time = UtcOf(kLocalFields)}};
    RenderAll();

    ASSERT_EQ(records_.size(), 1u);
    EXPECT_EQ(records_[0]->timeText, L"05/03/2024 07:09:03");
}

std::vector<std::wstring> g_timeCalls;
bool g_toLocalSucceeds = true;

BOOL WINAPI ToLocalFileTime(const FILETIME* utc, LPFILETIME local) {
    g_timeCalls.push_back(L"FileTimeToLocalFileTime " + std::to_wstring(utc->dwLowDateTime));
    *local = {utc->dwLowDateTime + 10'000'000, utc->dwHighDateTime};
    return g_toLocalSucceeds;
}

BOOL WINAPI ToSystemTime(const FILETIME* local, LPSYSTEMTIME fields) {
    g_timeCalls.push_back(L"FileTimeToSystemTime " + std::to_wstring(local->dwLowDateTime));
    *fields = kLocalFields;
    return TRUE;
}

class RenderedTime : public RenderEventRecordTest {
protected:
    RenderedTime() {
        g_timeCalls.clear();
        g_toLocalSucceeds = true;
        g_service.answers = {{.time = 1000}};
    }

private:
    test::ImportPatch<decltype(FileTimeToLocalFileTime)> toLocal_{"FileTimeToLocalFileTime",
                                                                  ToLocalFileTime};
    test::ImportPatch<decltype(FileTimeToSystemTime)> toFields_{"FileTimeToSystemTime",
                                                                ToSystemTime};
};

TEST_F(RenderedTime, IsConvertedToLocalTimeAndThenSplitIntoFields) {
    RenderAll();

    EXPECT_EQ(g_timeCalls, (std::vector<std::wstring>{L"FileTimeToLocalFileTime 1000",
                                                      L"FileTimeToSystemTime 10001000"}));
    ASSERT_EQ(records_.size(), 1u);
    EXPECT_EQ(records_[0]->timeText, L"05/03/2024 07:09:03");
}

TEST_F(RenderedTime, IsAllZeroWhenItCannotBeMadeLocal) {
    g_toLocalSucceeds = false;
    RenderAll();

    EXPECT_EQ(g_timeCalls, std::vector<std::wstring>{L"FileTimeToLocalFileTime 1000"});
    ASSERT_EQ(records_.size(), 1u);
    EXPECT_EQ(records_[0]->timeText, L"00/00/00 00:00:00");
}

}  // namespace
}  // namespace tavrin::eventlog
