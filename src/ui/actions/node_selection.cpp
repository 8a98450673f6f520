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

void OnNodeSelected(MainWindow& window, const NMTREEVIEWW& change) {
    ApplyPendingFilters(window);
    const std::shared_ptr<eventlog::EventNode> node = NodeOfItem(change.itemNew);
    SetNodeName(window, node->name);
    window.currentNode = node;
    if (!node->IsChannel()) {
        DisableSourcesPanel(window);
        return;
    }
    std::wstring query = query::BuildChannelQuery(*node);
    if (query == node->query) {
        StartLoad(window, FilterText::Clear);
    } else {
        StartReload(window, std::move(query), FilterText::Clear);
    }
}

}  // namespace tavrin::ui
