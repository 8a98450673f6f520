#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <limits>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "eventlog/search_index.h"

namespace tavrin::eventlog {

using EventRecordPtr = std::shared_ptr<const EventRecord>;
using EventRecordList = std::vector<EventRecordPtr>;

// How many records a load reads before it pauses, and by how many it goes on.
inline constexpr std::uint64_t kLoadPage = 10000;
inline constexpr std::uint64_t kNoLoadLimit = std::numeric_limits<std::uint64_t>::max();

// One folder or channel of the tree, and the object over which a channel's loader
// and the window meet. Created with make_shared; a worker holds its node for its
// whole life.
struct EventNode {
    EventNode(std::wstring nodeName, std::wstring nodeId, std::uint32_t nodeFlags);

    bool IsChannel() const;

    std::wstring name;    // shown in the tree
    std::wstring id;      // a channel's path, a folder's key
    std::uint32_t flags;  // node_flags

    EventRecordList recordList;  // guarded by recordListMutex
    std::mutex recordListMutex;

    SearchIndex searchIndex;  // guarded by recordListMutex: of the record list

    // Written on the window thread while no loader of the node runs.
    std::wstring query;

    std::uint64_t counter = 0;  // guarded by recordListMutex: records the drain has taken
    std::atomic<std::uint8_t> done{0};
    std::atomic<std::uint32_t> loadResult{0};   // the service's code; 0 is success
    std::atomic<std::uint8_t> loading{0};       // exchanged to 1: one activity a load
    std::atomic<std::uint64_t> loadedCount{0};  // raised after the records are in the list

    std::mutex loadMutex;
    std::condition_variable loadCondition;  // waited on while loadedCount is at the limit
    double loaderTime = 0.0;
    std::uint64_t loadLimit = kLoadPage;         // guarded by loadMutex
    std::atomic<std::uint8_t> stopRequested{0};  // set under loadMutex
};

// Appends a page of loaded records and raises the loaded count. Any thread.
void AppendRecords(EventNode& node, EventRecordList page);

}  // namespace tavrin::eventlog
