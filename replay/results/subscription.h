#pragma once

#include "replay/calls/object.h"
#include "replay/platform/kernel_handle.h"
#include "replay/platform/lock.h"
#include "replay/results/result_cursor.h"

#include <cstdint>
#include <memory>
#include <vector>

#include <windows.h>
#include <winevt.h>

namespace replay::results {

// A pull subscription: signals an event object when matching events have arrived, once until the
// subscriber has read them all. Safe on any thread.
class Subscription final : public calls::Object {
public:
    // Keeps an event object of its own, so that the caller may close his.
    Subscription(ResultCursor cursor, HANDLE signal);

    bool IsAbout(std::wstring_view foldedChannel) const override;

    // Looks for events that have arrived and signals them.
    void Notify();

    // The events that arrived; fails with 4317 when nothing was signalled, 259 when all were read.
    DWORD Take(std::size_t most, std::vector<events::EventPlace>& events);

private:
    bool IsSignalled() const;

    mutable platform::Lock lock_;
    ResultCursor cursor_;  // guarded by lock_
    const platform::UniqueKernelHandle signal_;
    bool notified_ = false;  // guarded by lock_: signalled since the last event was read
};

}  // namespace replay::results
