#include "eventlog/records/record_disposer.h"

#include <chrono>
#include <cstdint>
#include <future>
#include <memory>
#include <thread>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "eventlog/records/event_record.h"

namespace tavrin::eventlog {
namespace {

// Stores the id of the thread that destroys it.
class FreedOn {
public:
    EventRecordPtr Record() {
        const auto free = [this](const EventRecord* record) {
            delete record;
            thread_.set_value(std::this_thread::get_id());
        };
        return {new EventRecord(1, 1, 1, std::uint8_t{1}, {}, L"P", L"P", 0), free};
    }

    std::future<std::thread::id> Thread() { return thread_.get_future(); }

private:
    std::promise<std::thread::id> thread_;
};

// Not written as an initializer list, which would hold a reference until the end of the statement.
LoadedRecords Only(EventRecordPtr record) {
    LoadedRecords records;
    records.records.ReserveMore(1);
    records.records.Append(std::move(record));
    return records;
}

TEST(RecordDisposer, FreesOnAnotherThread) {
    FreedOn first;
    FreedOn second;
    RecordDisposer disposer;
    for (FreedOn* freed : {&first, &second}) {
        std::future<std::thread::id> thread = freed->Thread();
        disposer.Dispose(Only(freed->Record()));
        EXPECT_NE(thread.get(), std::this_thread::get_id());
    }
}

TEST(RecordDisposer, LeavesRecordsThatAreStillReferenced) {
    FreedOn freed;
    const EventRecordPtr held = freed.Record();
    {
        RecordDisposer disposer;
        disposer.Dispose(Only(held));
    }
    EXPECT_EQ(held->level, 1u);
    EXPECT_EQ(held.use_count(), 1);
}

TEST(RecordDisposer, HasFreedEverythingWhenItEnds) {
    std::vector<std::weak_ptr<const EventRecord>> disposed;
    {
        RecordDisposer disposer;
        for (int list = 0; list < 100; ++list) {
            const EventRecordPtr record = std::make_shared<const EventRecord>(
                1, 1, 1, std::uint8_t{1}, CalendarTime{}, L"P", L"P", 0);
            disposed.push_back(record);
            disposer.Dispose(Only(record));
        }
    }
    for (const auto& record : disposed) {
        EXPECT_TRUE(record.expired());
    }
}

TEST(RecordDisposer, DoesNotWaitWithoutRecords) {
    RecordDisposer disposer;
    disposer.Dispose({});
}

}  // namespace
}  // namespace tavrin::eventlog
