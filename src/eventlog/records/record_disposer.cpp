#include "eventlog/records/record_disposer.h"

#include <exception>
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

void RecordDisposer::Dispose(LoadedRecords records) noexcept {
    if (records.records.empty()) {
        return;
    }
    try {
        StartOnce();
        const std::lock_guard lock(mutex_);
        queue_.push_back(std::move(records));
    } catch (const std::exception& error) {
        diag::TraceException(error);
        return;
    }
    changed_.notify_one();
}

void RecordDisposer::StartOnce() {
    if (!thread_.joinable()) {
        thread_ = std::thread(&RecordDisposer::Run, this);
    }
}

void RecordDisposer::Run() {
    std::unique_lock lock(mutex_);
    for (;;) {
        changed_.wait(lock, [this] { return ending_ || !queue_.empty(); });
        if (queue_.empty()) {
            return;
        }
        std::vector<LoadedRecords> taken = std::exchange(queue_, {});
        lock.unlock();
        taken.clear();
        lock.lock();
    }
}

}  // namespace tavrin::eventlog
