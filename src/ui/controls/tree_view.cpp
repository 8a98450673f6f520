#include "ui/controls/tree_view.h"

#include <algorithm>
#include <exception>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "diag/debug_trace.h"
#include "eventlog/channels/channels_tree.h"
#include "eventlog/channels/node_flags.h"
#include "eventlog/loading/workers.h"
#include "resource.h"
#include "ui/controls/image_list.h"
#include "ui/controls/redraw_off.h"
#include "ui/controls/window_state.h"

namespace tavrin::ui {
namespace {

namespace node_flags = eventlog::node_flags;

using diag::DebugTrace;
using eventlog::ChannelsTree;
using eventlog::EventNode;
using eventlog::VertexDescriptor;

constexpr int kNoImage = -1;

struct NodeIcon {
    std::uint32_t flags;
    UINT icon;
};

// In the order of the image list.
constexpr NodeIcon kNodeIcons[] = {
    {node_flags::Folder | node_flags::RootFolder, IDI_TREE_ROOT},
    {node_flags::Folder | node_flags::PublisherFolder, IDI_TREE_PUBLISHER},
    {node_flags::Folder | node_flags::WindowsLogsFolder, IDI_TREE_WINDOWS_LOGS},
    {node_flags::Folder | node_flags::AppsAndServicesFolder, IDI_TREE_SERVICES_LOGS},
    {node_flags::Channel | node_flags::DebugChannel, IDI_TREE_DEBUG_CHANNEL},
    {node_flags::Channel | node_flags::AdminChannel, IDI_TREE_ADMIN_CHANNEL},
    {node_flags::Channel | node_flags::AnalyticChannel, IDI_TREE_ANALYTIC_CHANNEL},
    {node_flags::Channel | node_flags::OperationalChannel, IDI_TREE_OPERATIONAL_CHANNEL},
};

HIMAGELIST MakeNodeImages() {
    std::vector<UINT> icons;
    std::ranges::transform(kNodeIcons, std::back_inserter(icons), &NodeIcon::icon);
    return MakeIconList(icons, ILC_COLOR32, 1);
}

// Inserts a vertex and everything below it.
class TreeFill {
public:
    TreeFill(HWND control, const ChannelsTree& tree) : control_(control), tree_(tree) {}

    void Fill(VertexDescriptor vertex, HTREEITEM parent) {
        const std::shared_ptr<EventNode> node = tree_.GetNode(vertex);
        eventlog::ValidateNodeFlags(node->flags);
        const HTREEITEM item = Insert(*node, vertex, parent);
        for (const auto& [name, child] : SortedChildren(vertex)) {
            Fill(child, item);
        }
    }

private:
    HTREEITEM Insert(const EventNode& node, VertexDescriptor vertex, HTREEITEM parent) {
        TVINSERTSTRUCTW insertion{};
        insertion.hParent = parent;
        insertion.hInsertAfter = TVI_LAST;
        insertion.item.mask = TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_PARAM;
        insertion.item.pszText = const_cast<wchar_t*>(node.name.c_str());
        insertion.item.iImage = insertion.item.iSelectedImage = NodeImage(node.flags);
        insertion.item.lParam = static_cast<LPARAM>(vertex);
        return TreeView_InsertItem(control_, &insertion);
    }

    // Ordered by code unit: capital letters come before small ones.
    std::vector<std::pair<std::wstring, VertexDescriptor>> SortedChildren(
        VertexDescriptor vertex) const {
        std::vector<std::pair<std::wstring, VertexDescriptor>> children;
        for (const VertexDescriptor child : tree_.Children(vertex)) {
            children.emplace_back(tree_.GetNode(child)->name, child);
        }
        std::ranges::sort(children);
        return children;
    }

    HWND control_;
    const ChannelsTree& tree_;
};

}  // namespace

int NodeImage(std::uint32_t flags) {
    const auto entry = std::ranges::find(kNodeIcons, flags, &NodeIcon::flags);
    return entry == std::end(kNodeIcons) ? kNoImage
                                         : static_cast<int>(entry - std::begin(kNodeIcons));
}

void OnChannelsTreeBuilt(MainWindow& window) {
    const ChannelsTree& tree = *eventlog::g_eventApiContext->tree;
    DebugTrace(std::wstring(L"Got BuildChannlesTree completion from Event Log API Wrapper."));
    DebugTrace(L"Number of vertices: " + std::to_wstring(tree.VertexCount()));
    TreeView_SetImageList(window.controls.tree, MakeNodeImages(), TVSIL_NORMAL);
    const RedrawOff redraw(window.controls.tree);
    try {
        TreeFill(window.controls.tree, tree).Fill(tree.RootDescriptor(), TVI_ROOT);
    } catch (const std::exception& error) {
        diag::TraceException(error);
    }
}

std::shared_ptr<EventNode> NodeOfItem(const TVITEMW& item) {
    return eventlog::g_eventApiContext->tree->GetNode(static_cast<VertexDescriptor>(item.lParam));
}

}  // namespace tavrin::ui
