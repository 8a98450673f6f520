#include "eventlog/channels/channels_tree.h"

#include <stdexcept>
#include <utility>

#include "eventlog/channels/event_node.h"

namespace tavrin::eventlog {
namespace {

class Fnv1a {
public:
    // Adds the lowest bytes of value, low byte first.
    void Add(std::uint32_t value, int bytes) {
        for (int i = 0; i < bytes; ++i, value >>= 8) {
            hash_ = (hash_ ^ (value & 0xFF)) * 0x100000001b3;
        }
    }
    std::uint64_t Value() const { return hash_; }

private:
    std::uint64_t hash_ = 0xcbf29ce484222325;
};

}  // namespace

std::uint64_t HashNodeKey(std::wstring_view id, std::uint32_t flags) {
    Fnv1a idHash;
    for (const wchar_t unit : id) {
        idHash.Add(unit, 2);
    }
    Fnv1a flagsHash;
    flagsHash.Add(flags, 4);
    const std::uint64_t h = idHash.Value();
    return h ^ (flagsHash.Value() + 0x9e3779b97f4a7c15 + (h << 6) + (h >> 2));
}

std::size_t ChannelsTree::NodeKeyHash::operator()(const NodeKey& key) const {
    return static_cast<std::size_t>(HashNodeKey(key.id, key.flags));
}

VertexDescriptor ChannelsTree::AddVertex(std::shared_ptr<EventNode> node) {
    vertices_.push_back({{}, std::move(node)});
    return vertices_.size() - 1;
}

VertexDescriptor ChannelsTree::AddNode(std::shared_ptr<EventNode> node) {
    return AddChildNode(std::move(node), rootDescriptor_);
}

VertexDescriptor ChannelsTree::AddChildNode(std::shared_ptr<EventNode> node,
                                            VertexDescriptor parent) {
    At(parent);
    NodeKey key{node->id, node->flags};
    auto entry = nodeIndex_.find(key);
    if (entry == nodeIndex_.end()) {
        entry = nodeIndex_.emplace(std::move(key), AddVertex(std::move(node))).first;
    }
    vertices_[parent].children.insert(entry->second);
    return entry->second;
}

std::shared_ptr<EventNode> ChannelsTree::GetNode(VertexDescriptor vertex) const {
    return At(vertex).node;
}

const std::set<VertexDescriptor>& ChannelsTree::Children(VertexDescriptor vertex) const {
    return At(vertex).children;
}

std::size_t ChannelsTree::VertexCount() const {
    return vertices_.size();
}

void ChannelsTree::SetRootDescriptor(VertexDescriptor vertex) {
    rootDescriptor_ = vertex;
}

VertexDescriptor ChannelsTree::RootDescriptor() const {
    return rootDescriptor_;
}

const ChannelsTree::Vertex& ChannelsTree::At(VertexDescriptor vertex) const {
    if (vertex == kNullVertex) {
        throw std::out_of_range("Null vertex descriptor");
    }
    if (vertex >= vertices_.size()) {
        throw std::out_of_range("Vertex descriptor out of range");
    }
    return vertices_[vertex];
}

}  // namespace tavrin::eventlog
