#pragma once

#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

#include "eventlog/event_node.h"

namespace tavrin::eventlog {

// Frees records on a thread of its own: a million take some tenths of a second, in which
// a window could not answer.
class RecordDisposer {
public:
    RecordDisposer() = default;
    RecordDisposer(const RecordDisposer&) = delete;
    RecordDisposer& operator=(const RecordDisposer&) = delete;

    // Waits until everything is freed.
    ~RecordDisposer();

    // Takes over the records, and frees those that nobody else holds. Any thread, one at a
    // time. Where no thread can be started they are freed before it returns.
    void Dispose(EventRecordList records);

private:
    bool IsRunning();  // starts it when it is not
    void Run();

    std::mutex mutex_;
    std::condition_variable changed_;
    std::vector<EventRecordList> lists_;  // guarded by mutex_
    bool ending_ = false;                 // guarded by mutex_
    std::thread thread_;                  // started by the first list
};

}  // namespace tavrin::eventlog
