#pragma once

#include "replay/platform/kernel_handle.h"
#include "replay/results/reader.h"

#include <cstddef>
#include <vector>

#include <windows.h>

namespace replay::results {

// A pull subscription. Signals an event object when matching events arrive, and again only after
// the subscriber has read them all.
class Subscription final : public Reader {
public:
    // Duplicates the event object's handle, so the caller may close its own.
    Subscription(ResultCursor cursor, HANDLE signal);

    // Checks for arrived events and signals them.
    void Notify();

    // Takes arrived events. Returns 4317 if nothing was signalled, 259 if all events were read.
    DWORD Take(std::size_t most, std::vector<events::EventPlace>& events,
               calls::Operation& operation) override;

private:
    bool IsSignalled() const;

    const platform::UniqueKernelHandle signal_;
    bool notified_ = false;  // guarded by lock_: signalled since the last event was read
};

}  // namespace replay::results
