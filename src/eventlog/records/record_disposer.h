#pragma once

#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

#include "eventlog/records/search_index.h"

namespace tavrin::eventlog {

// Frees records on a thread of its own. Freeing a million takes tenths of a second, during which
// the window would not answer.
class RecordDisposer {
public:
    RecordDisposer() = default;
    RecordDisposer(const RecordDisposer&) = delete;
    RecordDisposer& operator=(const RecordDisposer&) = delete;

    // Waits until everything is freed.
    ~RecordDisposer();

    // Frees the records that nobody else holds. Not thread-safe: one caller at a time. Frees them
    // before it returns if the thread cannot be started or memory is short.
    void Dispose(LoadedRecords records) noexcept;

private:
    void StartOnce();
    void Run();

    std::mutex mutex_;
    std::condition_variable changed_;
    std::vector<LoadedRecords> queue_;  // guarded by mutex_
    bool ending_ = false;               // guarded by mutex_
    std::thread thread_;                // started with the first records
};

}  // namespace tavrin::eventlog
