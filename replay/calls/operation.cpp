#include "replay/calls/operation.h"

#include <algorithm>
#include <mutex>
#include <utility>

namespace replay::calls {
namespace {

using namespace std::chrono_literals;

// Shorter waits spin, because a sleep may end too late.
constexpr auto kShortestSleep = 2ms;
// A scan sleeps as soon as it owes this much.
constexpr auto kScanSleep = 20ms;

}  // namespace

void Operation::End() {
    object_->Pending()->Remove(*this);
}

void Operation::BeginOn(std::shared_ptr<Object> object) {
    if (object == nullptr || object->Pending() == nullptr) {
        return;
    }
    object_ = std::move(object);
    object_->Pending()->Add(*this);
}

void Operation::Cancel() {
    const std::lock_guard guard(lock_);
    cancelled_ = true;
    if (wake_) {
        SetEvent(wake_.get());
    }
}

void Operation::Wait(std::chrono::milliseconds time) {
    WaitFor(nullptr, time);
}

void Operation::WaitFor(HANDLE signal, std::chrono::milliseconds longest) {
    {
        const std::lock_guard guard(lock_);
        if (!wake_) {
            wake_ = platform::UniqueKernelHandle(
                CreateEventW(nullptr, TRUE, cancelled_ ? TRUE : FALSE, nullptr));
        }
    }
    const HANDLE objects[] = {wake_.get(), signal};
    WaitForMultipleObjects(signal == nullptr ? 1 : 2, objects, FALSE,
                           static_cast<DWORD>(longest.count()));
}

void Operation::SetCosts(const Costs& costs) {
    costs_ = costs;
    owed_ += costs.call;
}

bool Operation::PassOver() {
    owed_ += costs_.skippedEvent;
    if (owed_ >= kScanSleep) {
        Sleep(kScanSleep);
    }
    return !IsCancelled();
}

bool Operation::Spend() {
    if (owed_ >= kShortestSleep) {
        Sleep(std::chrono::duration_cast<std::chrono::milliseconds>(owed_) - 1ms);
    }
    const Clock::time_point end = Clock::now() + owed_;
    owed_ = {};
    while (!IsCancelled() && Clock::now() < end) {
        YieldProcessor();
    }
    return !IsCancelled();
}

// Time slept too long counts as paid in advance.
void Operation::Sleep(std::chrono::milliseconds time) {
    const Clock::time_point begin = Clock::now();
    Wait(time);
    owed_ -= Clock::now() - begin;
}

void PendingOperations::Cancel() {
    const std::lock_guard guard(lock_);
    for (Operation* operation : operations_) {
        operation->Cancel();
    }
}

void PendingOperations::Add(Operation& operation) {
    const std::lock_guard guard(lock_);
    operations_.push_back(&operation);
}

void PendingOperations::Remove(Operation& operation) {
    const std::lock_guard guard(lock_);
    std::erase(operations_, &operation);
}

}  // namespace replay::calls
