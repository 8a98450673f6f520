#include "eventlog/channels/channels_tree.h"

#include <cstdint>
#include <limits>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include "eventlog/channels/event_node.h"
#include "support/message_of.h"

namespace tavrin::eventlog {
namespace {

using Vertices = std::set<VertexDescriptor>;

std::shared_ptr<EventNode> MakeNode(const wchar_t* id, std::uint32_t flags) {
    return std::make_shared<EventNode>(id, id, flags);
}

// A tree with only a root, the state in which the enumeration begins.
class ChannelsTreeWithRoot : public testing::Test {
protected:
    ChannelsTreeWithRoot() {
        root_ = tree_.AddVertex(MakeNode(L"Root", 0x101));
        tree_.SetRootDescriptor(root_);
    }

    ChannelsTree tree_;
    VertexDescriptor root_;
};

TEST(ChannelsTree, StartsEmpty) {
    EXPECT_EQ(ChannelsTree().VertexCount(), 0u);
}

TEST(ChannelsTree, TheNullDescriptorIsTheLargestValue) {
    EXPECT_EQ(kNullVertex, std::numeric_limits<VertexDescriptor>::max());
}

TEST(ChannelsTree, AddVertexAppendsAVertexWithoutChildren) {
    ChannelsTree tree;
    const auto node = MakeNode(L"A", 0x201);

    EXPECT_EQ(tree.AddVertex(node), 0u);

    EXPECT_EQ(tree.VertexCount(), 1u);
    EXPECT_EQ(tree.GetNode(0), node);
    EXPECT_TRUE(tree.Children(0).empty());
}

TEST(ChannelsTree, AddVertexNeverMergesAndIsNotFoundByItsKey) {
    ChannelsTree tree;

    EXPECT_EQ(tree.AddVertex(MakeNode(L"Root", 0x101)), 0u);
    EXPECT_EQ(tree.AddVertex(MakeNode(L"Root", 0x101)), 1u);
    EXPECT_EQ(tree.AddChildNode(MakeNode(L"Root", 0x101), 0), 2u);
}

TEST_F(ChannelsTreeWithRoot, DescriptorsCountUpInOrderOfCreation) {
    EXPECT_EQ(tree_.AddNode(MakeNode(L"A", 0x201)), 1u);
    EXPECT_EQ(tree_.AddNode(MakeNode(L"B", 0x201)), 2u);
    EXPECT_EQ(tree_.AddNode(MakeNode(L"A", 0x201)), 1u);
    EXPECT_EQ(tree_.AddNode(MakeNode(L"C", 0x201)), 3u);
    EXPECT_EQ(tree_.VertexCount(), 4u);
}

TEST_F(ChannelsTreeWithRoot, AddNodeAddsUnderTheRoot) {
    const auto node = MakeNode(L"A", 0x201);

    const VertexDescriptor added = tree_.AddNode(node);

    EXPECT_EQ(tree_.Children(root_), Vertices{added});
    EXPECT_EQ(tree_.GetNode(added), node);
    EXPECT_EQ(tree_.RootDescriptor(), root_);
}

TEST_F(ChannelsTreeWithRoot, AddChildNodeWithANewKeyAppendsAndLinks) {
    const VertexDescriptor folder = tree_.AddNode(MakeNode(L"A", 0x201));
    const auto channel = MakeNode(L"A/Admin", 0x006);

    const VertexDescriptor added = tree_.AddChildNode(channel, folder);

    EXPECT_EQ(tree_.GetNode(added), channel);
    EXPECT_EQ(tree_.Children(folder), Vertices{added});
    EXPECT_TRUE(tree_.Children(added).empty());
}

TEST_F(ChannelsTreeWithRoot, AddChildNodeWithAKnownKeyKeepsTheFirstNode) {
    const auto first = MakeNode(L"A", 0x201);
    const auto second = MakeNode(L"A", 0x201);
    const VertexDescriptor added = tree_.AddNode(first);

    EXPECT_EQ(tree_.AddNode(second), added);

    EXPECT_EQ(tree_.GetNode(added), first);
    EXPECT_EQ(second.use_count(), 1) << "the tree must not hold the dropped node";
}

TEST_F(ChannelsTreeWithRoot, TheSameKeyTwiceUnderOneParentIsOneVertexWithOneEdge) {
    const VertexDescriptor first = tree_.AddNode(MakeNode(L"A", 0x201));
    const VertexDescriptor second = tree_.AddNode(MakeNode(L"A", 0x201));

    EXPECT_EQ(first, second);
    EXPECT_EQ(tree_.VertexCount(), 2u);
    EXPECT_EQ(tree_.Children(root_), Vertices{first});
}

TEST_F(ChannelsTreeWithRoot, TheSameKeyUnderTwoParentsIsOneVertexWithTwoParents) {
    const VertexDescriptor a = tree_.AddNode(MakeNode(L"A", 0x201));
    const VertexDescriptor b = tree_.AddNode(MakeNode(L"B", 0x201));

    const VertexDescriptor underA = tree_.AddChildNode(MakeNode(L"C", 0x201), a);
    const VertexDescriptor underB = tree_.AddChildNode(MakeNode(L"C", 0x201), b);

    EXPECT_EQ(underA, underB);
    EXPECT_EQ(tree_.VertexCount(), 4u);
    EXPECT_EQ(tree_.Children(a), Vertices{underA});
    EXPECT_EQ(tree_.Children(b), Vertices{underA});
}

TEST_F(ChannelsTreeWithRoot, KeysDifferInFlagsAndInTheCaseOfTheId) {
    const VertexDescriptor folder = tree_.AddNode(MakeNode(L"Application", 0x201));

    EXPECT_NE(tree_.AddNode(MakeNode(L"Application", 0x006)), folder);
    EXPECT_NE(tree_.AddNode(MakeNode(L"application", 0x201)), folder);
    EXPECT_EQ(tree_.VertexCount(), 4u);
}

TEST_F(ChannelsTreeWithRoot, ChildrenAreAscendingWhateverTheOrderOfLinking) {
    const VertexDescriptor a = tree_.AddNode(MakeNode(L"A", 0x201));
    const VertexDescriptor b = tree_.AddNode(MakeNode(L"B", 0x201));
    const VertexDescriptor c = tree_.AddNode(MakeNode(L"C", 0x201));

    tree_.AddChildNode(MakeNode(L"C", 0x201), a);
    tree_.AddChildNode(MakeNode(L"B", 0x201), a);

    const auto& children = tree_.Children(a);
    EXPECT_EQ(std::vector<VertexDescriptor>(children.begin(), children.end()),
              (std::vector<VertexDescriptor>{b, c}));
}

TEST_F(ChannelsTreeWithRoot, GetNodeGivesANewSharedReference) {
    auto node = MakeNode(L"A", 0x201);
    const VertexDescriptor vertex = tree_.AddNode(node);

    const auto reference = tree_.GetNode(vertex);

    EXPECT_EQ(reference, node);
    EXPECT_EQ(node.use_count(), 3);  // `node`, the tree's reference and the new one
}

TEST_F(ChannelsTreeWithRoot, ABadDescriptorIsNamedByTheError) {
    tree_.AddNode(MakeNode(L"A", 0x201));
    const struct {
        VertexDescriptor vertex;
        const char* error;
    } cases[] = {
        {kNullVertex, "Null vertex descriptor"},
        {tree_.VertexCount(), "Vertex descriptor out of range"},
        {tree_.VertexCount() + 1, "Vertex descriptor out of range"},
        {kNullVertex - 1, "Vertex descriptor out of range"},
    };
    for (const auto& bad : cases) {
        const VertexDescriptor vertex = bad.vertex;
        EXPECT_EQ(test::MessageOf<std::exception>([&] { tree_.GetNode(vertex); }), bad.error);
        EXPECT_EQ(test::MessageOf<std::exception>([&] { tree_.Children(vertex); }), bad.error);
        EXPECT_EQ(test::MessageOf<std::exception>(
                      [&] { tree_.AddChildNode(MakeNode(L"B", 0x201), vertex); }),
                  bad.error);
    }
    EXPECT_EQ(tree_.VertexCount(), 2u) << "a rejected child must not be added";
}

TEST(ChannelsTree, ReleasesItsNodesWhenItIsDestroyed) {
    const auto node = MakeNode(L"A", 0x201);
    {
        ChannelsTree tree;
        tree.AddVertex(node);
        EXPECT_EQ(node.use_count(), 2);
    }
    EXPECT_EQ(node.use_count(), 1);
}

// Computed by an independent implementation from the published description of FNV-1a.
TEST(HashNodeKey, MixesTheHashesOfIdAndFlags) {
    const struct {
        const wchar_t* id;
        std::uint32_t flags;
        std::uint64_t hash;
    } cases[] = {
        {L"", 0x0, 0xd0f24c77c28bc136},
        {L"Application", 0x6, 0x931b7c67e40f3482},
        {L"application", 0x6, 0x55fc913690c425fa},
        {L"Application", 0x201, 0xdc459e7c43f56eab},
        {L"Windows-Logs", 0x41, 0xd71ead98fed5811f},
        {L"Forwarded\x65e5", 0xFFFFFFFF, 0x2dc16b601cbc3b07},
        {L"\x0100", 0x6, 0xb2277cd02c28eecc},    // the low byte of a code unit is hashed first
        {L"a", 0x12345678, 0x9cbd267b17109517},  // and the low byte of the flags
    };
    for (const auto& [id, flags, hash] : cases) {
        EXPECT_EQ(HashNodeKey(id, flags), hash) << testing::PrintToString(std::wstring(id));
    }
}

}  // namespace
}  // namespace tavrin::eventlog
