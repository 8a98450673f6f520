#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <limits>
#include <mutex>
#include <string>

#include "base/chunked_list.h"
#include "eventlog/records/event_record.h"
#include "eventlog/records/search_index.h"

namespace tavrin::eventlog {

// How many records a load reads ahead of the list before it pauses.
inline constexpr std::uint64_t kReadAhead = 10000;
inline constexpr std::uint64_t kNoLoadLimit = std::numeric_limits<std::uint64_t>::max();

// One folder or channel of the tree, and the object on which a channel's loader and the
// window meet. Created with make_shared; a worker holds its node for its whole life. The
// fields of a load are changed by load_protocol.cpp alone.
struct EventNode {
    EventNode(std::wstring nodeName, std::wstring nodeId, std::uint32_t nodeFlags);

    bool IsChannel() const;

    std::wstring name;    // shown in the tree
    std::wstring id;      // a channel's path, a folder's key
    std::uint32_t flags;  // node_flags

    base::ChunkedList<EventRecordPtr> recordList;  // guarded by recordListMutex
    std::mutex recordListMutex;
    std::wstring query;                         // written while no loader of the node runs
    std::uint64_t counter = 0;                  // guarded by recordListMutex: records taken
    std::atomic<std::uint8_t> done{0};          // the query is exhausted
    std::atomic<std::uint32_t> loadResult{0};   // the service's code; 0 is success
    std::atomic<std::uint8_t> loading{0};       // one activity a load
    std::atomic<std::uint64_t> loadedCount{0};  // raised after the records are in the list
    std::mutex loadMutex;
    std::condition_variable loadCondition;  // the loader waits while loadedCount is at the limit
    double loaderTime = 0.0;
    std::uint64_t loadLimit = kReadAhead;        // guarded by loadMutex
    std::atomic<std::uint8_t> stopRequested{0};  // stored under loadMutex

    SearchIndex searchIndex;        // guarded by recordListMutex: of recordList
    SearchKeyMaker searchKeyMaker;  // the loader's
    void* pendingRead = nullptr;    // guarded by loadMutex: the query (an EVT_HANDLE) that
                                    // the loader is reading, so that it can be cancelled
};

}  // namespace tavrin::eventlog
