#pragma once

#include "replay/platform/kernel_handle.h"
#include "replay/results/reader.h"

#include <cstddef>
#include <vector>

#include <windows.h>

namespace replay::results {

// A pull subscription: signals an event object when matching events have arrived, once until the
// subscriber has read them all.
class Subscription final : public Reader {
public:
    // Keeps an event object of its own, so that the caller may close his.
    Subscription(ResultCursor cursor, HANDLE signal);

    // Looks for events that have arrived and signals them.
    void Notify();

    // The events that arrived; fails with 4317 when nothing was signalled, 259 when all were read.
    DWORD Take(std::size_t most, std::vector<events::EventPlace>& events,
               calls::Operation& operation) override;

private:
    bool IsSignalled() const;

    const platform::UniqueKernelHandle signal_;
    bool notified_ = false;  // guarded by lock_: signalled since the last event was read
};

}  // namespace replay::results
