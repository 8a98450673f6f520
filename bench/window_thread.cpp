// Measures the longest single operations of the window thread, with real controls in this process.

#include <cstdint>
#include <memory>
#include <string>

#include <gtest/gtest.h>
#include <windows.h>
#include <commctrl.h>

#include "bench/load_runs.h"
#include "bench/samples.h"
#include "eventlog/channels/channels_tree.h"
#include "eventlog/loading/load_protocol.h"
#include "eventlog/loading/workers.h"
#include "replay/replay_control.h"
#include "resource.h"
#include "ui/actions/channel_load.h"
#include "ui/actions/drain.h"
#include "ui/controls/image_list.h"
#include "ui/controls/tree_view.h"
#include "ui/controls/window_state.h"
#include "ui/create_controls.h"

namespace tavrin::bench {
namespace {

constexpr int kRuns = 5;
constexpr std::uint64_t kEvents = 1'000'000;
constexpr int kChannels = 1200;
constexpr int kPublishers = 400;
constexpr UINT kTreeIcons[] = {IDI_TREE_ROOT,
                               IDI_TREE_PUBLISHER,
                               IDI_TREE_WINDOWS_LOGS,
                               IDI_TREE_SERVICES_LOGS,
                               IDI_TREE_DEBUG_CHANNEL,
                               IDI_TREE_ADMIN_CHANNEL,
                               IDI_TREE_ANALYTIC_CHANNEL,
                               IDI_TREE_OPERATIONAL_CHANNEL};

// The main window's state and controls, in a plain window.
class Window {
public:
    Window()
        : state_(CreateWindowExW(0, L"Static", L"", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 1000,
                                 800, nullptr, nullptr, nullptr, nullptr)) {
        ui::CreateControls(state_, GetModuleHandleW(nullptr));
    }
    ~Window() { DestroyWindow(state_.handle); }
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    ui::MainWindow& State() { return state_; }

private:
    ui::MainWindow state_;
};

// Channels in publisher folders, about three per publisher, as on Windows.
std::wstring ManyChannels() {
    std::wstring script;
    for (int i = 0; i < kChannels; ++i) {
        const std::wstring publisher = L"Vendor-Component" + std::to_wstring(i % 20) +
                                       L"-Provider" + std::to_wstring(i % kPublishers);
        script += L"channel name=\"" + publisher + L"/Channel" + std::to_wstring(i / kPublishers) +
                  L"\" type=Operational owningPublisher=\"" + publisher + L"\" enabled=true\n";
    }
    return script;
}

TEST(WindowThread, FillingTheTree) {
    replay::Reset();
    ASSERT_TRUE(replay::Script(ManyChannels()));
    Samples filling;
    Samples icons;
    for (int run = 0; run < kRuns; ++run) {
        auto context = std::make_shared<eventlog::EventAPIContext>();
        context->tree = std::make_shared<eventlog::ChannelsTree>();
        ASSERT_EQ(eventlog::EventWrapper().BuildChannlesTree(*context->tree), 0u);
        eventlog::g_eventApiContext = std::move(context);
        Window window;
        Stopwatch watch;
        ui::OnChannelsTreeBuilt(window.State());
        filling.Add(watch.Milliseconds());
        watch.Restart();
        ImageList_Destroy(ui::MakeIconList(kTreeIcons, ILC_COLOR32, 1));
        icons.Add(watch.Milliseconds());
        EXPECT_GT(TreeView_GetCount(window.State().controls.tree), static_cast<UINT>(kChannels));
    }
    PrintHeadline("the window thread");
    filling.Print("filling the tree with 1,200 channels", "ms");
    icons.Print("loading the tree's icons, which is part of it", "ms");
}

TEST(WindowThread, DrainingAMillionRecordsAgain) {
    const LoadRuns runs(kEvents, L"");
    const auto node = MakeBenchNode();
    runs.LoadSeconds(*node);
    eventlog::BeginLoad(*node);
    Window window;
    window.State().currentNode = node;
    Samples milliseconds;
    for (int run = 0; run < kRuns; ++run) {
        ui::StartLoad(window.State(), ui::FilterText::Clear);
        const Stopwatch watch;
        ui::DrainRecords(window.State());
        milliseconds.Add(watch.Milliseconds());
        EXPECT_EQ(window.State().rows.RowCount(), kEvents);
    }
    milliseconds.Print("the tick that drains all records again", "ms");
    for (eventlog::Worker& worker : window.State().workers) {
        worker.thread.join();
    }
    window.State().workers.clear();
}

}  // namespace
}  // namespace tavrin::bench
