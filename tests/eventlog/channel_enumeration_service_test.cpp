#include "eventlog/channels/channel_enumeration.h"

#include <cstdint>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "eventlog/channels/channels_tree.h"
#include "eventlog/channels/event_node.h"
#include "eventlog/service/evt_handle.h"
#include "replay/replay_control.h"
#include "support/import_patch.h"
#include "support/trace_capture.h"

#include "service_fixture.h"

namespace tavrin::eventlog {
namespace {

using Lines = std::vector<std::wstring>;

const std::wstring kStarting = L"EventWrapper::BuildChannlesTree starting...";
const std::wstring kCompleted = L"EventWrapper::BuildChannlesTree completed.";

std::wstring Hex(std::uint32_t flags) {
    std::wstring text;
    do {
        text.insert(text.begin(), L"0123456789ABCDEF"[flags % 16]);
        flags /= 16;
    } while (flags != 0);
    return L"0x" + text;
}

// Appends a line "name [id] flags" for each vertex, indented by its depth. Children appear in order
// of creation.
void Describe(const ChannelsTree& tree, VertexDescriptor vertex, const std::wstring& indent,
              Lines& lines) {
    const auto node = tree.GetNode(vertex);
    lines.push_back(indent + node->name + L" [" + node->id + L"] " + Hex(node->flags));
    for (const VertexDescriptor child : tree.Children(vertex)) {
        Describe(tree, child, indent + L" ", lines);
    }
}

class BuildChannlesTreeTest : public ServiceTest {
protected:
    Lines Build() {
        result_ = EventWrapper().BuildChannlesTree(tree_);
        Lines lines;
        Describe(tree_, tree_.RootDescriptor(), L"", lines);
        return lines;
    }

    // Wraps these lines in the root and the folders that every tree has.
    static Lines Folders(const Lines& inWindowsLogs, const Lines& inServicesLogs) {
        Lines lines = {L"Event Viewer (Local) [Event-Viewer-Local] 0x101",
                       L" Windows Logs [Windows-Logs] 0x41"};
        lines.insert(lines.end(), inWindowsLogs.begin(), inWindowsLogs.end());
        lines.push_back(L" Applications and Service Logs [Applications-And-Service-Logs] 0x81");
        lines.insert(lines.end(), inServicesLogs.begin(), inServicesLogs.end());
        return lines;
    }

    ChannelsTree tree_;
    std::uint32_t result_ = 99;
    test::TraceCapture trace_;
};

decltype(&EvtNextChannelPath) g_originalNextPath = nullptr;
bool g_sizeWasAsked = false;

// The first call that asks for a size succeeds, without a size.
BOOL WINAPI SucceedInSizingOnce(EVT_HANDLE channels, DWORD size, LPWSTR path, PDWORD used) {
    if (size == 0 && !std::exchange(g_sizeWasAsked, true)) {
        return TRUE;
    }
    return g_originalNextPath(channels, size, path, used);
}

TEST_F(BuildChannlesTreeTest, WithoutChannelsMakesTheThreeFixedFolders) {
    Serve();

    EXPECT_EQ(Build(), Folders({}, {}));

    EXPECT_EQ(result_, 0u);
    EXPECT_EQ(tree_.RootDescriptor(), 0u);
    EXPECT_EQ(tree_.GetNode(1)->id, L"Windows-Logs");
    EXPECT_EQ(tree_.GetNode(2)->id, L"Applications-And-Service-Logs");
}

TEST_F(BuildChannlesTreeTest, TheRootIsNotFoundByItsKey) {
    Serve();
    Build();

    const VertexDescriptor added = tree_.AddNode(
        std::make_shared<EventNode>(L"Event Viewer (Local)", L"Event-Viewer-Local", 0x101u));

    EXPECT_EQ(added, tree_.VertexCount() - 1);
}

TEST_F(BuildChannlesTreeTest, PutsTheClassicLogsUnderWindowsLogs) {
    for (const wchar_t* name : {L"Application", L"Security", L"Setup", L"System",
                                L"Forwarded Events", L"ForwardedEvents"}) {
        recording_.AddChannel({.name = name});
    }
    Serve();

    EXPECT_EQ(Build(), Folders({L"  Application [Application] 0x6", L"  Security [Security] 0x6",
                                L"  Setup [Setup] 0x6", L"  System [System] 0x6",
                                L"  Forwarded Events [Forwarded Events] 0x6"},
                               {L"  ForwardedEvents [ForwardedEvents] 0x6"}));
}

TEST_F(BuildChannlesTreeTest, KnowsTheClassicLogsByTheirExactNames) {
    for (const wchar_t* name : {L"SYSTEM", L"Setup 2", L"application"}) {
        recording_.AddChannel({.name = name});
    }
    Serve();

    EXPECT_EQ(Build(), Folders({}, {L"  SYSTEM [SYSTEM] 0x6", L"  Setup 2 [Setup 2] 0x6",
                                    L"  application [application] 0x6"}));
}

TEST_F(BuildChannlesTreeTest, PutsAChannelUnderItsPublishersFolders) {
    recording_.AddChannel({.name = L"Foo-Bar/Admin", .publisher = L"Foo-Bar"});
    Serve();

    EXPECT_EQ(Build(), Folders({}, {L"  Foo [Foo] 0x201", L"   Bar [Foo-Bar] 0x201",
                                    L"    Admin [Foo-Bar/Admin] 0x6"}));
}

TEST_F(BuildChannlesTreeTest, PublishersThatBeginAlikeShareFolders) {
    recording_.AddChannel({.name = L"Acme-Foo-Bar-Baz/Main-Operational",
                           .type = L"Operational",
                           .publisher = L"Acme-Foo-Bar-Baz"});
    recording_.AddChannel(
        {.name = L"Acme-Foo-Qux/Debug", .type = L"Debug", .publisher = L"Acme-Foo-Qux"});
    Serve();

    EXPECT_EQ(
        Build(),
        Folders({}, {L"  Acme [Acme] 0x201", L"   Foo [Acme-Foo] 0x201",
                     L"    Bar-Baz [Acme-Foo-Bar-Baz] 0x201",
                     L"     Main-Operational [Acme-Foo-Bar-Baz/Main-Operational] 0xA",
                     L"    Qux [Acme-Foo-Qux] 0x201", L"     Debug [Acme-Foo-Qux/Debug] 0x22"}));
}

TEST_F(BuildChannlesTreeTest, NamesAChannelByItsPathAndPublisher) {
    recording_.AddChannel({.name = L"Foo-Bar-Debug", .type = L"Analytic", .publisher = L"Foo-Bar"});
    recording_.AddChannel({.name = L"Other/Log", .publisher = L"Foo"});
    Serve();

    EXPECT_EQ(Build(),
              Folders({}, {L"  Foo [Foo] 0x201", L"   Bar [Foo-Bar] 0x201",
                           L"    Debug [Foo-Bar-Debug] 0x12", L"   Other/Log [Other/Log] 0x6"}));
}

TEST_F(BuildChannlesTreeTest, APublisherNamedAsAClassicLogHasItsFolderUnderWindowsLogs) {
    recording_.AddChannel({.name = L"Security-Audit/Log", .publisher = L"Security-Audit"});
    recording_.AddChannel({.name = L"System", .publisher = L"Foo"});
    Serve();

    EXPECT_EQ(Build(), Folders({L"  Security [Security] 0x201", L"   Audit [Security-Audit] 0x201",
                                L"    Log [Security-Audit/Log] 0x6"},
                               {L"  Foo [Foo] 0x201", L"   System [System] 0x6"}));
}

TEST_F(BuildChannlesTreeTest, AnEmptyPublisherPartIsAFolderWithoutAName) {
    recording_.AddChannel({.name = L"-Bar/Admin", .publisher = L"-Bar"});
    Serve();

    EXPECT_EQ(Build(),
              Folders({}, {L"   [] 0x201", L"   Bar [-Bar] 0x201", L"    Admin [-Bar/Admin] 0x6"}));
}

TEST_F(BuildChannlesTreeTest, TracesItsStartAndItsEnd) {
    Serve();
    Build();

    EXPECT_EQ(trace_.WideMessages(), (Lines{kStarting, kCompleted}));
    EXPECT_TRUE(trace_.NarrowMessages().empty());
}

TEST_F(BuildChannlesTreeTest, AsksTheServiceForSizesFirstAndClosesWhatItOpened) {
    recording_.AddChannel({.name = L"Foo/Admin", .publisher = L"Foo"});
    Serve();
    Build();

    EXPECT_EQ(
        TakeCalls(),
        (Lines{
            L"EvtOpenChannelEnum(Session=NULL, Flags=0x0)",
            L"EvtNextChannelPath(ChannelEnum=#1, ChannelPathBufferSize=0, ChannelPathBuffer=NULL)",
            L"EvtNextChannelPath(ChannelEnum=#1, ChannelPathBufferSize=10, ChannelPathBuffer=set)",
            L"EvtOpenChannelConfig(Session=NULL, ChannelPath=\"Foo/Admin\", Flags=0x0)",
            L"EvtGetChannelConfigProperty(ChannelConfig=#2, PropertyId=3, Flags=0x0, "
            L"PropertyValueBufferSize=512, PropertyValueBuffer=set)",
            L"EvtGetChannelConfigProperty(ChannelConfig=#2, PropertyId=2, Flags=0x0, "
            L"PropertyValueBufferSize=512, PropertyValueBuffer=set)",
            L"EvtClose(Object=#2)",
            L"EvtNextChannelPath(ChannelEnum=#1, ChannelPathBufferSize=0, ChannelPathBuffer=NULL)",
            L"EvtClose(Object=#1)",
        }));
}

TEST_F(BuildChannlesTreeTest, AsksForEachPathWithTheSizeThatWasReportedForIt) {
    recording_.AddChannel({.name = L"A-Long-Name/Operational"});
    recording_.AddChannel({.name = L"B"});
    Serve();
    Build();

    Lines sizes;
    for (const std::wstring& call : TakeCalls()) {
        const std::size_t size = call.find(L"ChannelPathBufferSize=");
        if (size != std::wstring::npos) {
            sizes.push_back(call.substr(size, call.find(L',', size) - size));
        }
    }
    EXPECT_EQ(sizes, (Lines{L"ChannelPathBufferSize=0", L"ChannelPathBufferSize=24",
                            L"ChannelPathBufferSize=0", L"ChannelPathBufferSize=2",
                            L"ChannelPathBufferSize=0"}));
}

TEST_F(BuildChannlesTreeTest, WithoutAChannelListKeepsTheFixedFoldersAndReturnsOne) {
    recording_.AddChannel({.name = L"System"});
    Serve();
    Script(L"fail EvtOpenChannelEnum code=1722");

    EXPECT_EQ(Build(), Folders({}, {}));

    EXPECT_EQ(result_, 1u);
    EXPECT_EQ(trace_.WideMessages(), (Lines{kStarting, L"EvtOpenChannelEnum failed with 1722\n"}));
    EXPECT_EQ(TakeCalls().size(), 1u);
}

TEST_F(BuildChannlesTreeTest, ASecondPathCallThatFailsEndsTheList) {
    recording_.AddChannel({.name = L"Alpha"});
    recording_.AddChannel({.name = L"Beta"});
    Serve();
    Script(L"fail EvtNextChannelPath code=1722 call=4");

    EXPECT_EQ(Build(), Folders({}, {L"  Alpha [Alpha] 0x6"}));

    EXPECT_EQ(result_, 0u);
    EXPECT_EQ(trace_.WideMessages(), (Lines{kStarting, kCompleted}));
}

TEST_F(BuildChannlesTreeTest, AnUnexpectedFailureOfTheFirstPathCallKeepsTheOldBuffer) {
    recording_.AddChannel({.name = L"Alpha"});
    recording_.AddChannel({.name = L"Beta"});
    Serve();
    // Call 1 has an empty buffer. Call 4 asks for Beta while the buffer holds "Alpha".
    Script(L"fail EvtNextChannelPath code=1722 call=1\nfail EvtNextChannelPath code=1722 call=4");
    EXPECT_EQ(Build(), Folders({}, {L"  Alpha [Alpha] 0x6", L"  Beta [Beta] 0x6"}))
        << "the buffer must hold the whole previous path";

    const Lines configs = TakeCallsOf(L"EvtOpenChannelConfig");
    ASSERT_EQ(configs.size(), 4u);
    EXPECT_EQ(configs[0], L"EvtOpenChannelConfig(Session=NULL, ChannelPath=\"\", Flags=0x0)");
    EXPECT_EQ(configs[1], L"EvtOpenChannelConfig(Session=NULL, ChannelPath=\"Alpha\", Flags=0x0)");
    EXPECT_EQ(configs[2], L"EvtOpenChannelConfig(Session=NULL, ChannelPath=\"Alpha\", Flags=0x0)");
    EXPECT_EQ(configs[3], L"EvtOpenChannelConfig(Session=NULL, ChannelPath=\"Beta\", Flags=0x0)");
    EXPECT_EQ(result_, 0u);
}

EventWrapper* g_building = nullptr;
int g_configsOpened = 0;

EVT_HANDLE WINAPI StopAtThirdConfig(EVT_HANDLE, LPCWSTR, DWORD) {
    if (++g_configsOpened == 3) {
        g_building->StopBuilding();
    }
    return nullptr;
}

TEST_F(BuildChannlesTreeTest, StopsAfterTheCurrentChannelEvenInAnEndlessList) {
    Serve();
    Script(L"fail EvtNextChannelPath code=5");
    const test::ImportPatch<decltype(EvtOpenChannelConfig)> patch("EvtOpenChannelConfig",
                                                                  StopAtThirdConfig);
    EventWrapper wrapper;
    g_building = &wrapper;
    g_configsOpened = 0;

    EXPECT_EQ(wrapper.BuildChannlesTree(tree_), 0u);

    EXPECT_EQ(g_configsOpened, 3);
    EXPECT_EQ(trace_.WideMessages().back(), kCompleted);
}

TEST_F(BuildChannlesTreeTest, APathShorterThanThePreviousOneEndsAtItsTerminator) {
    recording_.AddChannel({.name = L"A-long-channel-name/Operational"});
    recording_.AddChannel({.name = L"B"});
    Serve();

    EXPECT_EQ(Build(), Folders({}, {L"  A-long-channel-name/Operational "
                                    L"[A-long-channel-name/Operational] 0x6",
                                    L"  B [B] 0x6"}));
    EXPECT_EQ(tree_.GetNode(4)->id.size(), 1u) << "the id must end at the terminator";
}

TEST_F(BuildChannlesTreeTest, AChannelWhoseConfigurationCannotBeOpenedIsTracedAndLeftOut) {
    recording_.AddChannel({.name = L"Alpha"});
    recording_.AddChannel({.name = L"Beta"});
    recording_.AddChannel({.name = L"Gamma"});
    Serve();
    Script(L"fail EvtOpenChannelConfig code=5 channel=\"Beta\"");

    EXPECT_EQ(Build(), Folders({}, {L"  Alpha [Alpha] 0x6", L"  Gamma [Gamma] 0x6"}));

    EXPECT_EQ(result_, 0u);
    EXPECT_EQ(trace_.WideMessages(),
              (Lines{kStarting, L"Failed to open config for Beta: 5\n", kCompleted}));
}

TEST_F(BuildChannlesTreeTest, ASizingCallThatSucceedsLeavesTheBufferAndTheWalkGoesOn) {
    recording_.AddChannel({.name = L"Alpha"});
    Serve();
    const test::ImportPatch<decltype(EvtNextChannelPath)> patch("EvtNextChannelPath",
                                                                SucceedInSizingOnce);
    g_originalNextPath = patch.Original();
    g_sizeWasAsked = false;

    EXPECT_EQ(Build(), Folders({}, {L"  Alpha [Alpha] 0x6"}));
}

TEST_F(BuildChannlesTreeTest, APublisherThatCannotBeReadIsEmpty) {
    recording_.AddChannel({.name = L"Foo/Admin", .type = L"Debug", .publisher = L"Foo"});
    recording_.AddChannel({.name = L"Foo/Beta", .type = L"Debug", .publisher = L"Foo"});
    Serve();
    for (const wchar_t* code : {L"5", L"0"}) {
        const test::TraceCapture trace;
        // Beta's publisher
        Script(std::wstring(L"fail EvtGetChannelConfigProperty call=3 code=") + code);

        // Beta's type is not read: the type of the previous channel stays.
        EXPECT_EQ(Build(), Folders({}, {L"  Foo [Foo] 0x201", L"   Admin [Foo/Admin] 0x22",
                                        L"  Foo/Beta [Foo/Beta] 0x22"}));
        EXPECT_EQ(trace.WideMessages(), (Lines{kStarting, kCompleted}));
    }
}

TEST_F(BuildChannlesTreeTest, AChannelWithAnUnreadableTypeGetsThePreviousChannelsType) {
    recording_.AddChannel({.name = L"Alpha", .type = L"Operational"});
    recording_.AddChannel({.name = L"Beta", .type = L"Debug"});
    recording_.AddChannel({.name = L"Gamma", .type = L"Debug"});
    Serve();
    for (const wchar_t* code : {L"5", L"0"}) {
        // Beta's type
        Script(std::wstring(L"fail EvtGetChannelConfigProperty call=4 code=") + code);

        EXPECT_EQ(Build(), Folders({}, {L"  Alpha [Alpha] 0xA", L"  Beta [Beta] 0xA",
                                        L"  Gamma [Gamma] 0x22"}));
    }
}

TEST_F(BuildChannlesTreeTest, WithoutAnyReadableTypeAChannelHasNoType) {
    recording_.AddChannel({.name = L"Alpha", .type = L"Debug"});
    Serve();
    Script(L"fail EvtGetChannelConfigProperty code=5");

    EXPECT_EQ(Build(), Folders({}, {L"  Alpha [Alpha] 0x2"}));
}

TEST_F(BuildChannlesTreeTest, GrowsItsBufferForALongPublisher) {
    const std::wstring publisher(1000, L'p');
    recording_.AddChannel({.name = L"Other", .publisher = publisher});
    Serve();

    EXPECT_EQ(Build(), Folders({}, {L"  " + publisher + L" [" + publisher + L"] 0x201",
                                    L"   Other [Other] 0x6"}));

    const Lines reads = TakeCallsOf(L"EvtGetChannelConfigProperty");
    ASSERT_EQ(reads.size(), 3u);
    const std::size_t size = sizeof(EVT_VARIANT) + (publisher.size() + 1) * sizeof(wchar_t);
    EXPECT_NE(
        reads[1].find(L"PropertyId=3, Flags=0x0, PropertyValueBufferSize=" + std::to_wstring(size)),
        std::wstring::npos)
        << testing::PrintToString(reads[1]);
}

TEST_F(BuildChannlesTreeTest, ASecondPropertyCallThatFailsIsTracedByTheProperty) {
    recording_.AddChannel({.name = L"Other", .publisher = L"Foo"});
    const struct {
        const wchar_t* script;
        const wchar_t* line;
        Lines folders;
    } cases[] = {
        {L"fail EvtGetChannelConfigProperty code=122 call=1\n"
         L"fail EvtGetChannelConfigProperty code=1722 call=2",
         L"EvtGetChannelConfigProperty(OwningPublisher) failed with 1722",
         Folders({}, {L"  Other [Other] 0x2"})},
        {L"fail EvtGetChannelConfigProperty code=122 call=2\n"
         L"fail EvtGetChannelConfigProperty code=1722 call=3",
         L"EvtGetChannelConfigProperty(ChannelType) failed with 1722",
         Folders({}, {L"  Foo [Foo] 0x201", L"   Other [Other] 0x2"})},
    };
    for (const auto& [script, line, folders] : cases) {
        Serve();
        Script(script);
        const std::size_t before = trace_.WideMessages().size();
        tree_ = ChannelsTree();

        EXPECT_EQ(Build(), folders);

        const Lines lines = trace_.WideMessages();
        EXPECT_EQ(Lines(lines.begin() + static_cast<std::ptrdiff_t>(before), lines.end()),
                  (Lines{kStarting, line, kCompleted}));
    }
}

// The error that PropertyWithoutText fails with, or ERROR_SUCCESS.
DWORD g_propertyError = ERROR_SUCCESS;

BOOL WINAPI PropertyWithoutText(EVT_HANDLE, EVT_CHANNEL_CONFIG_PROPERTY_ID id, DWORD, DWORD,
                                PEVT_VARIANT value, PDWORD used) {
    *used = sizeof(*value);
    SetLastError(g_propertyError);
    *value = {};
    value->UInt32Val = id == EvtChannelConfigType ? 3 : 0;
    return g_propertyError == ERROR_SUCCESS;
}

class ReadChannelConfigTest : public testing::Test {
protected:
    ReadChannelConfigTest() { g_propertyError = ERROR_SUCCESS; }

    std::wstring publisher_;
    std::uint32_t type_ = 77;

private:
    test::ImportPatch<decltype(EvtGetChannelConfigProperty)> property_{
        "EvtGetChannelConfigProperty", PropertyWithoutText};
};

TEST_F(ReadChannelConfigTest, ANullPublisherStaysEmpty) {
    EXPECT_EQ(ReadChannelConfig(nullptr, publisher_, type_), 0u);

    EXPECT_EQ(publisher_, L"");
    EXPECT_EQ(type_, 3u);
}

TEST_F(ReadChannelConfigTest, AFailedReadGivesItsCodeAndLeavesTheRestAlone) {
    g_propertyError = 1722;

    EXPECT_EQ(ReadChannelConfig(nullptr, publisher_, type_), 1722u);

    EXPECT_EQ(publisher_, L"");
    EXPECT_EQ(type_, 77u);
}

}  // namespace
}  // namespace tavrin::eventlog
