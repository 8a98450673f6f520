#include "eventlog/loading/load_protocol.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <utility>
#include <vector>

#include <windows.h>
#include <winevt.h>

#include "base/chunked_list.h"

namespace tavrin::eventlog {
namespace {

constexpr std::int32_t kNearEndRows = 2000;
constexpr std::chrono::milliseconds kCancelPeriod{10};

void RaiseLimit(EventNode& node, std::uint64_t limit) {
    {
        const std::lock_guard lock(node.loadMutex);
        node.loadLimit = std::max(node.loadLimit, limit);
    }
    node.loadCondition.notify_one();
}

LoadedRecords RemoveRecords(EventNode& node) {
    const std::lock_guard lock(node.recordListMutex);
    node.counter = 0;
    return {std::exchange(node.recordList, {}), std::exchange(node.searchIndex, {})};
}

// Needs the load mutex, so that the query is not closed meanwhile. Has no effect before the service
// has begun the read.
void CancelRead(const EventNode& node) {
    if (node.pendingRead != nullptr) {
        EvtCancel(node.pendingRead);
    }
}

void ReserveForPage(EventNode& node, std::size_t records) {
    const std::lock_guard lock(node.recordListMutex);
    node.recordList.ReserveMore(records);
    node.searchIndex.keys.ReserveMore(records);
    node.searchIndex.kinds.ReserveMore(records);
}

// Moves all elements to the end. Needs reserved room.
template <typename T>
void MoveAll(base::ChunkedList<T>& to, std::vector<T>& from) {
    for (T& element : from) {
        to.Append(std::move(element));
    }
}

}  // namespace

LoadedRecords ResetForLoad(EventNode& node, std::wstring query) {
    // First, because only this can fail: Visual C++'s maps allocate when they are made.
    node.searchKeyMaker = {};
    LoadedRecords records = RemoveRecords(node);
    {
        const std::lock_guard lock(node.loadMutex);
        node.loadLimit = kReadAhead;
        node.stopRequested.store(0);
    }
    node.loadedCount.store(0);
    node.done.store(0);
    node.loadResult.store(ERROR_SUCCESS);
    node.loading.store(0);
    node.query = std::move(query);
    return records;
}

bool BeginLoad(EventNode& node) {
    if (node.loading.exchange(1) != 0) {
        return false;
    }
    node.loadResult.store(ERROR_SUCCESS);
    return true;
}

bool HasLeftovers(const EventNode& node) {
    return node.loading.load() == 0 && node.loadedCount.load() != 0;
}

void RewindRecords(EventNode& node) {
    const std::lock_guard lock(node.recordListMutex);
    node.counter = 0;
}

bool TakeRecords(EventNode& node, LoadedRecords& taken) {
    const std::lock_guard lock(node.recordListMutex);
    if (node.counter < node.recordList.size()) {
        // The records last: a failure before leaves more keys than records, which is harmless.
        taken.index.kinds.Follow(node.searchIndex.kinds);
        taken.index.keys.Follow(node.searchIndex.keys);
        taken.records.Follow(node.recordList);
        node.counter = node.recordList.size();
    }
    // Read after the records and under their lock, so an end seen here leaves no record behind.
    return node.done.load() == 0 && node.loadResult.load() == ERROR_SUCCESS;
}

void ExtendLoad(EventNode& node) {
    RaiseLimit(node, node.loadedCount.load() + kReadAhead);
}

void UnlimitLoad(EventNode& node) {
    RaiseLimit(node, kNoLoadLimit);
}

void StopLoad(EventNode& node) {
    {
        const std::lock_guard lock(node.loadMutex);
        node.stopRequested.store(1, std::memory_order_release);
        CancelRead(node);
    }
    node.loadCondition.notify_all();
}

void AwaitReadEnd(EventNode& node) {
    std::unique_lock lock(node.loadMutex);
    while (node.pendingRead != nullptr) {
        CancelRead(node);
        node.loadCondition.wait_for(lock, kCancelPeriod);
    }
}

void AcknowledgeFailure(EventNode& node) {
    if (node.loadedCount.load() != 0) {
        node.loading.store(0);
    }
}

bool NearsEnd(std::int32_t lastRow, std::int32_t rowCount) {
    return lastRow >= rowCount - kNearEndRows;
}

bool AwaitRoom(EventNode& node) {
    std::unique_lock lock(node.loadMutex);
    node.loadCondition.wait(lock, [&node] {
        return node.stopRequested.load() != 0 || node.loadedCount.load() < node.loadLimit;
    });
    return node.stopRequested.load() == 0;
}

PendingRead::PendingRead(EventNode& node, void* query) : node_(node) {
    const std::lock_guard lock(node_.loadMutex);
    mayRead_ = node_.stopRequested.load() == 0;
    node_.pendingRead = mayRead_ ? query : nullptr;
}

PendingRead::~PendingRead() {
    {
        const std::lock_guard lock(node_.loadMutex);
        node_.pendingRead = nullptr;
    }
    node_.loadCondition.notify_all();
}

void AppendPage(EventNode& node, EventRecordList page) {
    if (page.empty()) {
        return;
    }
    // Nothing after these two calls can fail, so a page arrives whole or not at all.
    ReserveForPage(node, page.size());
    PageIndex added = node.searchKeyMaker.Index(page);
    const std::lock_guard lock(node.recordListMutex);
    MoveAll(node.recordList, page);
    MoveAll(node.searchIndex.keys, added.keys);
    MoveAll(node.searchIndex.kinds, added.newKinds);
    // Still locked: a reader that sees the count finds the records.
    node.loadedCount += page.size();
}

void MarkDone(EventNode& node) {
    node.done.store(1);
}

void StoreLoadResult(EventNode& node, std::uint32_t code) {
    node.loadResult.store(code);
}

void EndFailedLoad(EventNode& node) {
    std::uint32_t none = ERROR_SUCCESS;
    node.loadResult.compare_exchange_strong(none, ERROR_INTERNAL_ERROR);
    if (node.loadedCount.load() == 0) {
        node.done.store(0);  // set if the load failed behind its end
        node.loading.store(0);
    }
}

}  // namespace tavrin::eventlog
