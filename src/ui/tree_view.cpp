#include "ui/tree_view.h"

#include <algorithm>
#include <exception>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "diag/debug_trace.h"
#include "eventlog/channels_tree.h"
#include "eventlog/node_flags.h"
#include "eventlog/workers.h"
#include "query/query_builder.h"
#include "resource.h"
#include "ui/filter_bar.h"
#include "ui/header_pane.h"
#include "ui/image_list.h"
#include "ui/load_start.h"
#include "ui/main_window.h"
#include "ui/redraw_off.h"
#include "ui/sources_panel.h"

namespace tavrin::ui {
namespace {

using diag::DebugTrace;
using eventlog::ChannelsTree;
using eventlog::EventNode;
using eventlog::VertexDescriptor;

constexpr int kNoImage = -1;

struct NodeIcon {
    std::uint32_t flags;
    UINT icon;
};

// In the order of the images.
constexpr NodeIcon kNodeIcons[] = {
    {0x101, IDI_TREE_ROOT},
    {0x201, IDI_TREE_PUBLISHER},
    {0x41, IDI_TREE_WINDOWS_LOGS},
    {0x81, IDI_TREE_SERVICES_LOGS},
    {0x22, IDI_TREE_DEBUG_CHANNEL},
    {0x06, IDI_TREE_ADMIN_CHANNEL},
    {0x12, IDI_TREE_ANALYTIC_CHANNEL},
    {0x0A, IDI_TREE_OPERATIONAL_CHANNEL},
};

HIMAGELIST MakeNodeImages() {
    std::vector<UINT> icons;
    std::ranges::transform(kNodeIcons, std::back_inserter(icons), &NodeIcon::icon);
    return MakeIconList(icons, ILC_COLOR32, 1);
}

// Inserts a vertex and all below it.
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

    // By name, code unit for code unit: capitals come before small letters.
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

void ShowChannel(MainWindow& window) {
    const EventNode& node = *window.currentNode;
    std::wstring query = query::BuildChannelQuery(node);
    if (query == node.query) {
        StartLoad(window, FilterText::Clear);
    } else {
        StartReload(window, std::move(query), FilterText::Clear);
    }
}

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
        DebugTrace(std::string(error.what()));
    }
}

void OnTreeSelection(MainWindow& window, const NMTREEVIEWW& change) {
    ApplyPendingFilters(window);
    const auto vertex = static_cast<VertexDescriptor>(change.itemNew.lParam);
    const std::shared_ptr<EventNode> node = eventlog::g_eventApiContext->tree->GetNode(vertex);
    SetNodeName(window, node->name);
    window.currentNode = node;
    if (node->IsChannel()) {
        ShowChannel(window);
    } else {
        DisableSourcesPanel(window);
    }
}

}  // namespace tavrin::ui
