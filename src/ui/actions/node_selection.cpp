#include "ui/actions/node_selection.h"

#include <memory>
#include <string>
#include <utility>

#include "query/query_builder.h"
#include "ui/actions/apply_filters.h"
#include "ui/actions/channel_load.h"
#include "ui/controls/header_pane.h"
#include "ui/controls/sources_panel.h"
#include "ui/controls/tree_view.h"
#include "ui/controls/window_state.h"

namespace tavrin::ui {
namespace {

void ShowChannel(MainWindow& window) {
    const eventlog::EventNode& node = *window.currentNode;
    std::wstring query = query::BuildChannelQuery(node);
    if (query == node.query) {
        StartLoad(window, FilterText::Clear);
    } else {
        StartReload(window, std::move(query), FilterText::Clear);
    }
}

}  // namespace

void OnNodeSelected(MainWindow& window, const NMTREEVIEWW& change) {
    ApplyPendingFilters(window);
    window.currentNode = NodeOfItem(change.itemNew);
    SetNodeName(window, window.currentNode->name);
    if (window.currentNode->IsChannel()) {
        ShowChannel(window);
    } else {
        DisableSourcesPanel(window);
    }
}

}  // namespace tavrin::ui
