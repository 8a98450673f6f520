#include "eventlog/channels/event_node.h"

#include <utility>

#include "eventlog/channels/node_flags.h"

namespace tavrin::eventlog {

EventNode::EventNode(std::wstring nodeName, std::wstring nodeId, std::uint32_t nodeFlags)
    : name(std::move(nodeName)), id(std::move(nodeId)), flags(nodeFlags) {}

bool EventNode::IsChannel() const {
    return (flags & node_flags::Channel) != 0;
}

}  // namespace tavrin::eventlog
