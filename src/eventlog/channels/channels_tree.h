#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tavrin::eventlog {

struct EventNode;

// A vertex's index in the tree. Tree items carry it.
using VertexDescriptor = std::size_t;
inline constexpr VertexDescriptor kNullVertex = std::numeric_limits<VertexDescriptor>::max();

// Two nodes with equal keys are the same node.
struct NodeKey {
    std::wstring id;
    std::uint32_t flags;

    bool operator==(const NodeKey&) const = default;
};

// 64-bit FNV-1a over the id's UTF-16 bytes (low byte first), mixed with the same
// over the flags.
std::uint64_t HashNodeKey(std::wstring_view id, std::uint32_t flags);

// Every channel of the computer in its folders. Filled by one worker thread, then only read by the
// window thread. The completion message hands it over, so it needs no lock.
class ChannelsTree {
public:
    // Appends a vertex without a parent. AddChildNode does not find it by its key.
    VertexDescriptor AddVertex(std::shared_ptr<EventNode> node);

    // Adds a node under the root.
    VertexDescriptor AddNode(std::shared_ptr<EventNode> node);

    // Adds a node under a parent. If a node with the same id and flags exists, links that one and
    // drops the new one. Throws as GetNode does for a bad parent.
    VertexDescriptor AddChildNode(std::shared_ptr<EventNode> node, VertexDescriptor parent);

    // Throws std::out_of_range: "Null vertex descriptor", "Vertex descriptor out of range".
    std::shared_ptr<EventNode> GetNode(VertexDescriptor vertex) const;

    // The children in ascending order. Throws as GetNode does.
    const std::set<VertexDescriptor>& Children(VertexDescriptor vertex) const;

    std::size_t VertexCount() const;

    // The vertex under which AddNode adds.
    void SetRootDescriptor(VertexDescriptor vertex);
    VertexDescriptor RootDescriptor() const;

private:
    struct Vertex {
        std::set<VertexDescriptor> children;
        std::shared_ptr<EventNode> node;
    };
    struct NodeKeyHash {
        std::size_t operator()(const NodeKey& key) const;
    };

    const Vertex& At(VertexDescriptor vertex) const;

    std::vector<Vertex> vertices_;
    VertexDescriptor rootDescriptor_ = kNullVertex;
    std::unordered_map<NodeKey, VertexDescriptor, NodeKeyHash> nodeIndex_;
};

}  // namespace tavrin::eventlog
