#pragma once

#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

#include "eventlog/records/search_index.h"

namespace tavrin::eventlog {

// Frees records on a thread of its own: freeing a million takes tenths of a second, and the
// window could not answer meanwhile.
class RecordDisposer {
public:
    RecordDisposer() = default;
    RecordDisposer(const RecordDisposer&) = delete;
    RecordDisposer& operator=(const RecordDisposer&) = delete;

    // Waits until everything is freed.
    ~RecordDisposer();

    // Takes the records over and frees those that nobody else holds. Not thread-safe: one
    // caller at a time. If the thread cannot be started or memory is short, frees them before
    // it returns.
    void Dispose(LoadedRecords records) noexcept;

private:
    void StartOnce();
    void Run();

    std::mutex mutex_;
    std::condition_variable changed_;
    std::vector<LoadedRecords> queue_;  // guarded by mutex_
    bool ending_ = false;               // guarded by mutex_
    std::thread thread_;                // started by the first records
};

}  // namespace tavrin::eventlog
