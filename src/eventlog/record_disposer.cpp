#include "eventlog/record_disposer.h"

#include <string>
#include <system_error>
#include <utility>

#include "diag/debug_trace.h"

namespace tavrin::eventlog {

RecordDisposer::~RecordDisposer() {
    if (!thread_.joinable()) {
        return;
    }
    {
        const std::lock_guard lock(mutex_);
        ending_ = true;
    }
    changed_.notify_one();
    thread_.join();
}

void RecordDisposer::Dispose(EventRecordList records) {
    if (records.empty() || !IsRunning()) {
        return;
    }
    {
        const std::lock_guard lock(mutex_);
        lists_.push_back(std::move(records));
    }
    changed_.notify_one();
}

bool RecordDisposer::IsRunning() {
    try {
        if (!thread_.joinable()) {
            thread_ = std::thread(&RecordDisposer::Run, this);
        }
    } catch (const std::system_error& error) {
        diag::DebugTrace(std::string(error.what()));
    }
    return thread_.joinable();
}

void RecordDisposer::Run() {
    std::unique_lock lock(mutex_);
    for (;;) {
        changed_.wait(lock, [this] { return ending_ || !lists_.empty(); });
        if (lists_.empty()) {
            return;
        }
        std::vector<EventRecordList> lists = std::exchange(lists_, {});
        lock.unlock();
        lists.clear();
        lock.lock();
    }
}

}  // namespace tavrin::eventlog
