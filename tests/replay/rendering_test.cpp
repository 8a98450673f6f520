#include "event_log.h"
#include "test_recording.h"

#include <cstring>

namespace {

using namespace replay_test;

class Rendering : public ReplayTest {
protected:
    // Serves a log with this event only, and returns the event.
    Handle OnlyEvent(const std::string& xml) const {
        ServeAlpha("<Events>\r\n" + xml + "\r\n</Events>\r\n");
        return NextEvent(Query(L"Alpha"));
    }
};

constexpr const char* kFullEvent =
    "<Event xmlns='http://schemas.microsoft.com/win/2004/08/events/event'><System>"
    "<Provider Name='Elm &amp; \xC3\x84sche' Guid='{01020304-0506-0708-090a-0b0c0d0e0f10}'/>"
    "<EventID Qualifiers='16384'>7036</EventID><Version>2</Version><Level>3</Level><Task>11</Task>"
    "<Opcode>12</Opcode><Keywords>0x80000000000000</Keywords>"
    "<TimeCreated SystemTime='2024-03-01T08:00:00.123456789Z'/><EventRecordID>42</EventRecordID>"
    "<Correlation ActivityID='{00000000-0000-0000-0000-000000000001}'/>"
    "<Execution ProcessID='4294967295' "
    "ThreadID='34'/><Channel>Alpha</Channel><Computer>HOST</Computer>"
    "<Security UserID='S-1-5-21-1-2-3-500'/></System><EventData><Data>x</Data></EventData></Event>";

constexpr const char* kOldEvent =
    "<Event xmlns='http://schemas.microsoft.com/win/2004/08/events/event'><System><Provider "
    "Name='Old'/>"
    "<EventID "
    "Qualifiers='0'>1</EventID><Level>4</Level><Task>0</Task><Keywords>0x80000000000000</Keywords>"
    "<TimeCreated "
    "SystemTime='2024-03-01T08:00:00Z'/><EventRecordID>43</EventRecordID><Channel>Alpha</Channel>"
    "<Computer>HOST</Computer><Security/></System><EventData></EventData></Event>";

TEST_F(Rendering, EverySystemValueHasItsType) {
    constexpr DWORD kTypes[] = {1, 15, 6, 6, 4, 6, 4, 21, 17, 10, 15, 0, 8, 8, 1, 1, 19, 4};
    const Handle event = OnlyEvent(kFullEvent);
    const SystemValues values(event.get());
    for (int i = 0; i < 18; ++i)
        EXPECT_EQ(values.Type(static_cast<EVT_SYSTEM_PROPERTY_ID>(i)), kTypes[i]) << i;
}

TEST_F(Rendering, EverySystemValueMatchesTheEvent) {
    const Handle event = OnlyEvent(kFullEvent);
    const SystemValues values(event.get());
    EXPECT_STREQ(values[EvtSystemProviderName].StringVal, L"Elm & \x00C4sche");
    EXPECT_EQ(values[EvtSystemProviderGuid].GuidVal->Data1, 0x01020304u);
    EXPECT_EQ(values[EvtSystemProviderGuid].GuidVal->Data4[7], 0x10);
    EXPECT_EQ(values[EvtSystemEventID].UInt16Val, 7036);
    EXPECT_EQ(values[EvtSystemQualifiers].UInt16Val, 16384);
    EXPECT_EQ(values[EvtSystemLevel].ByteVal, 3);
    EXPECT_EQ(values[EvtSystemTask].UInt16Val, 11);
    EXPECT_EQ(values[EvtSystemOpcode].ByteVal, 12);
    EXPECT_EQ(values[EvtSystemKeywords].UInt64Val, 0x80000000000000u);
    EXPECT_EQ(values[EvtSystemEventRecordId].UInt64Val, 42u);
    EXPECT_EQ(values[EvtSystemProcessID].UInt32Val, 4294967295u);
    EXPECT_EQ(values[EvtSystemThreadID].UInt32Val, 34u);
    EXPECT_STREQ(values[EvtSystemChannel].StringVal, L"Alpha");
    EXPECT_STREQ(values[EvtSystemComputer].StringVal, L"HOST");
    EXPECT_EQ(values[EvtSystemVersion].ByteVal, 2);
}

TEST_F(Rendering, TimesKeepTheir100Nanoseconds) {
    const Handle event = OnlyEvent(kFullEvent);
    const ULONGLONG time = SystemValues(event.get())[EvtSystemTimeCreated].FileTimeVal;
    const FILETIME fileTime{static_cast<DWORD>(time), static_cast<DWORD>(time >> 32)};
    SYSTEMTIME fields{};
    ASSERT_TRUE(::FileTimeToSystemTime(&fileTime, &fields));
    EXPECT_EQ(fields.wYear, 2024);
    EXPECT_EQ(fields.wHour, 8);
    EXPECT_EQ(time % 10'000'000, 1'234'567u);
}

TEST_F(Rendering, TheUserIsASid) {
    const Handle event = OnlyEvent(kFullEvent);
    const SystemValues values(event.get());
    constexpr unsigned char kSid[] = {1, 5, 0, 0, 0, 0, 0, 5, 21, 0, 0,    0, 1, 0,
                                      0, 0, 2, 0, 0, 0, 3, 0, 0,  0, 0xF4, 1, 0, 0};
    EXPECT_EQ(std::memcmp(values[EvtSystemUserID].SidVal, kSid, sizeof kSid), 0);
}

TEST_F(Rendering, MissingValuesOfAnOldEventAreNull) {
    const Handle event = OnlyEvent(kOldEvent);
    const SystemValues values(event.get());
    for (const auto id :
         {EvtSystemProviderGuid, EvtSystemOpcode, EvtSystemActivityID, EvtSystemRelatedActivityID,
          EvtSystemProcessID, EvtSystemThreadID, EvtSystemUserID, EvtSystemVersion}) {
        EXPECT_EQ(values.Type(id), DWORD{EvtVarTypeNull}) << id;
        EXPECT_EQ(values[id].UInt64Val, 0u) << id;
    }
}

TEST_F(Rendering, ATooSmallBufferIs122WithTheRequiredSize) {
    const Handle event = OnlyEvent(kOldEvent);
    const Handle context = SystemContext();
    DWORD needed = 0;
    DWORD count = 0;
    EXPECT_FALSE(
        ::EvtRender(context.get(), event.get(), EvtRenderEventValues, 0, nullptr, &needed, &count));
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_INSUFFICIENT_BUFFER});
    // 18 variants, then "Old", "Alpha" and "HOST".
    EXPECT_EQ(needed, 18 * sizeof(EVT_VARIANT) + (4 + 6 + 5) * sizeof(wchar_t));
    std::vector<EVT_VARIANT> buffer(64);
    EXPECT_FALSE(::EvtRender(context.get(), event.get(), EvtRenderEventValues, needed - 1,
                             buffer.data(), &needed, &count));
    EXPECT_TRUE(::EvtRender(context.get(), event.get(), EvtRenderEventValues, needed, buffer.data(),
                            &needed, &count));
}

TEST_F(Rendering, TheXmlIsTheRecordedTextWithoutTheRenderingInfo) {
    const RecordedEvent plain{
        .data = L"<EventData><Data Name='x'>a\r\nb\nc</Data><Data></Data></EventData>",
        .message = {}};
    RecordedEvent rendered = plain;
    rendered.message = L"A message.\r\n";
    const Handle event = OnlyEvent(Xml(rendered));
    const std::string expected = Xml(plain);
    EXPECT_EQ(Render(event.get()), std::wstring(expected.begin(), expected.end()));
}

TEST_F(Rendering, TextsOfEveryPlaneBecomeUtf16) {
    const Handle event = OnlyEvent(
        "<Event><System/><EventData><Data>\xC3\xA9\xE6\x97\xA5\xF0\x9F\x8C\xB2"
        "</Data></EventData></Event>");
    EXPECT_NE(Render(event.get()).find(L"<Data>\x00E9\x65E5\xD83C\xDF32</Data>"),
              std::wstring::npos);
}

TEST_F(Rendering, LoneSurrogatesAreHandedOn) {
    const Handle event =
        OnlyEvent("<Event><System><Provider Name='P\xED\xA0\x80'/></System></Event>");
    EXPECT_STREQ(SystemValues(event.get())[EvtSystemProviderName].StringVal, L"P\xD800");
}

TEST_F(Rendering, AWrongContextIsError6) {
    const Handle event = NextEvent(Query(L"Alpha"));
    DWORD used = 0;
    DWORD count = 0;
    EXPECT_FALSE(
        ::EvtRender(event.get(), event.get(), EvtRenderEventValues, 0, nullptr, &used, &count));
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_INVALID_HANDLE});
}

}  // namespace
