#include "eventlog/event_node.h"

#include <iterator>
#include <utility>

#include "eventlog/node_flags.h"

namespace tavrin::eventlog {

EventNode::EventNode(std::wstring nodeName, std::wstring nodeId, std::uint32_t nodeFlags)
    : name(std::move(nodeName)), id(std::move(nodeId)), flags(nodeFlags) {}

bool EventNode::IsChannel() const {
    return (flags & node_flags::Channel) != 0;
}

void AppendRecords(EventNode& node, EventRecordList page) {
    const std::lock_guard lock(node.recordListMutex);
    // Where the memory did not suffice for a page, its keys may be there without its records.
    node.searchIndex.Truncate(node.recordList.size());
    for (const EventRecordPtr& record : page) {
        node.searchIndex.Add(record);
    }
    node.recordList.insert(node.recordList.end(), std::make_move_iterator(page.begin()),
                           std::make_move_iterator(page.end()));
    // Still locked: whoever sees the count finds the records.
    node.loadedCount += page.size();
}

}  // namespace tavrin::eventlog
