#include "eventlog/load_protocol.h"

#include <algorithm>
#include <utility>

namespace tavrin::eventlog {
namespace {

constexpr std::int32_t kLoadAheadRows = 2000;

EventRecordList TakeRecords(EventNode& node) {
    const std::lock_guard lock(node.recordListMutex);
    node.counter = 0;
    node.searchIndex.Clear();
    return std::exchange(node.recordList, {});
}

void RaiseLimit(EventNode& node, std::uint64_t limit) {
    {
        const std::lock_guard lock(node.loadMutex);
        node.loadLimit = std::max(node.loadLimit, limit);
    }
    node.loadCondition.notify_one();
}

}  // namespace

EventRecordList ResetForLoad(EventNode& node, std::wstring query) {
    EventRecordList records = TakeRecords(node);
    {
        const std::lock_guard lock(node.loadMutex);
        node.loadLimit = kLoadPage;
        node.stopRequested.store(0);
    }
    node.loadedCount.store(0);
    node.done.store(0);
    node.loadResult.store(0);
    node.loading.store(0);
    node.query = std::move(query);
    return records;
}

void ExtendLoad(EventNode& node) {
    RaiseLimit(node, node.loadedCount.load() + kLoadPage);
}

void UnlimitLoad(EventNode& node) {
    RaiseLimit(node, kNoLoadLimit);
}

void StopLoad(EventNode& node) {
    {
        const std::lock_guard lock(node.loadMutex);
        node.stopRequested.store(1, std::memory_order_release);
    }
    node.loadCondition.notify_all();
}

bool NearsEnd(std::int32_t lastRow, std::int32_t rowCount) {
    return lastRow >= rowCount - kLoadAheadRows;
}

}  // namespace tavrin::eventlog
