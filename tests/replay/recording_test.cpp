#include "event_log.h"
#include "support/temp_folder.h"
#include "test_recording.h"

#include <gmock/gmock.h>

namespace {

using namespace replay_test;
using testing::ElementsAre;
using Ids = std::vector<unsigned long long>;

using Recording = ReplayTest;

std::vector<std::wstring> ChannelPaths() {
    std::vector<std::wstring> paths;
    const Handle channels(::EvtOpenChannelEnum(nullptr, 0));
    wchar_t path[256];
    DWORD used = 0;
    while (::EvtNextChannelPath(channels.get(), 256, path, &used))
        paths.emplace_back(path);
    return paths;
}

EVT_VARIANT LogInfo(const wchar_t* channel, EVT_LOG_PROPERTY_ID id) {
    const Handle log(::EvtOpenLog(nullptr, channel, EvtOpenChannelPath));
    EVT_VARIANT value{};
    DWORD used = 0;
    ::EvtGetLogInfo(log.get(), id, sizeof value, &value, &used);
    return value;
}

TEST_F(Recording, ChannelsComeInTheOrderOfTheList) {
    EXPECT_THAT(ChannelPaths(), ElementsAre(L"Alpha", L"Beta/Operational", L"Locked",
                                            L"Trace/Analytic", L"Quiet/Debug"));
}

TEST_F(Recording, ChannelNamesAreDecoded) {
    ServeChannels("<channel name='A &amp; &lt;B&gt; &quot;C&quot; &apos;D&apos;' type='Admin'/>");
    EXPECT_THAT(ChannelPaths(), ElementsAre(L"A & <B> \"C\" 'D'"));
}

struct ConfigCase {
    const wchar_t* channel;
    DWORD type;
    const wchar_t* publisher;
    BOOL enabled;
};
constexpr ConfigCase kConfigs[] = {
    {L"Alpha", 0, L"", TRUE},
    {L"Beta/Operational", 1, L"Beta-Works", TRUE},
    {L"Trace/Analytic", 2, L"Beta-Works", TRUE},
    {L"Quiet/Debug", 3, L"Beta-Works", FALSE},
};

TEST_F(Recording, TheConfigurationComesFromTheList) {
    for (const ConfigCase& expected : kConfigs) {
        const Handle config(::EvtOpenChannelConfig(nullptr, expected.channel, 0));
        EVT_VARIANT buffer[16]{};
        DWORD used = 0;
        ::EvtGetChannelConfigProperty(config.get(), EvtChannelConfigType, 0, sizeof buffer, buffer,
                                      &used);
        EXPECT_EQ(buffer[0].UInt32Val, expected.type);
        ::EvtGetChannelConfigProperty(config.get(), EvtChannelConfigEnabled, 0, sizeof buffer,
                                      buffer, &used);
        EXPECT_EQ(buffer[0].BooleanVal, expected.enabled);
        ::EvtGetChannelConfigProperty(config.get(), EvtChannelConfigOwningPublisher, 0,
                                      sizeof buffer, buffer, &used);
        const wchar_t* publisher = buffer[0].Type == EvtVarTypeNull ? L"" : buffer[0].StringVal;
        EXPECT_STREQ(publisher, expected.publisher);
    }
}

TEST_F(Recording, AChannelWithoutAFileIsEmpty) {
    const Handle results = Query(L"Beta/Operational");
    ASSERT_TRUE(results);
    EXPECT_EQ(RecordIds(results), Ids());
    EXPECT_EQ(LogInfo(L"Beta/Operational", EvtLogNumberOfLogRecords).UInt64Val, 0u);
}

TEST_F(Recording, TheLogTellsItsNumberAndItsOldestRecord) {
    EXPECT_EQ(LogInfo(L"Alpha", EvtLogNumberOfLogRecords).UInt64Val, 4u);
    EXPECT_EQ(LogInfo(L"Alpha", EvtLogOldestRecordNumber).UInt64Val, 1u);
}

TEST_F(Recording, ADirectChannelTellsNoNumbersOfItsRecords) {
    for (const wchar_t* channel : {L"Trace/Analytic", L"Quiet/Debug"}) {
        const Handle log(::EvtOpenLog(nullptr, channel, EvtOpenChannelPath));
        for (int id = EvtLogCreationTime; id <= EvtLogFull; ++id) {
            const bool isUnknown = id == EvtLogNumberOfLogRecords ||
                                   id == EvtLogOldestRecordNumber || id == EvtLogFull;
            EVT_VARIANT value{};
            DWORD used = 0;
            EXPECT_EQ(ErrorOf(::EvtGetLogInfo(log.get(), static_cast<EVT_LOG_PROPERTY_ID>(id),
                                              sizeof value, &value, &used)),
                      isUnknown ? DWORD{ERROR_NOT_SUPPORTED} : DWORD{ERROR_SUCCESS})
                << id;
        }
    }
}

TEST_F(Recording, TheLogOfAnUnknownChannelIs15007) {
    EXPECT_EQ(::EvtOpenLog(nullptr, L"None", EvtOpenChannelPath), nullptr);
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_EVT_CHANNEL_NOT_FOUND});
}

TEST_F(Recording, ADeniedChannelDeniesItsEventsButNotItsConfiguration) {
    EXPECT_EQ(QueryError(L"Locked", L"*"), DWORD{ERROR_ACCESS_DENIED});
    EXPECT_EQ(::EvtOpenLog(nullptr, L"Locked", EvtOpenChannelPath), nullptr);
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_ACCESS_DENIED});
    EXPECT_TRUE(Handle(::EvtOpenChannelConfig(nullptr, L"Locked", 0)));
}

TEST_F(Recording, AnEnabledDirectChannelIs15022InBothDirections) {
    for (const DWORD flags : {kForward, kReverse}) {
        EXPECT_EQ(QueryError(L"Trace/Analytic", L"*", flags),
                  DWORD{ERROR_EVT_INVALID_OPERATION_OVER_ENABLED_DIRECT_CHANNEL});
    }
}

TEST_F(Recording, ADisabledDirectChannelIsReadableOldestFirstOnly) {
    const Handle results = Query(L"Quiet/Debug");
    EXPECT_EQ(RecordIds(results), Ids{1});
    EXPECT_TRUE(::EvtSeek(results.get(), 0, nullptr, 0, EvtSeekRelativeToFirst));
    EXPECT_EQ(RecordIds(results), Ids{1});
    EXPECT_EQ(QueryError(L"Quiet/Debug", L"*", kReverse), DWORD{ERROR_NOT_SUPPORTED});
}

TEST_F(Recording, BothDirectionsGiveAllEvents) {
    EXPECT_EQ(RecordIds(Query(L"Alpha")), (Ids{1, 2, 4, 7}));
    EXPECT_EQ(RecordIds(Query(L"Alpha", L"*", kReverse)), (Ids{7, 4, 2, 1}));
}

TEST_F(Recording, ChannelsCanBeFoundByTheNameOfTheirFile) {
    recording.AddChannel({.name = L"A/B/C"});
    tavrin::test::WriteFile(recording.folder() / "A%4B%4C.xml",
                            "<Events>" + Xml({.recordId = 5}) + "</Events>");
    Serve();
    EXPECT_EQ(RecordIds(Query(L"A/B/C")), Ids{5});
}

TEST_F(Recording, TheEmbeddedRecordingHasChannelsAndEvents) {
    replay::LoadEmbedded();
    EXPECT_GT(ChannelPaths().size(), 100u);
    EXPECT_GT(LogInfo(L"System", EvtLogNumberOfLogRecords).UInt64Val, 1000u);
}

}  // namespace
