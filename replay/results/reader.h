#pragma once

#include "replay/calls/object.h"
#include "replay/calls/operation.h"
#include "replay/events/channel_log.h"
#include "replay/platform/lock.h"
#include "replay/results/result_cursor.h"

#include <cstddef>
#include <string>
#include <vector>

#include <windows.h>

namespace replay::results {

// A query or a subscription, from which events are read. Thread-safe.
class Reader : public calls::Object {
public:
    // These functions do not wait for a pending read.
    bool IsAbout(std::wstring_view foldedChannel) const override;
    bool IsReverse() const { return reverse_; }
    calls::PendingOperations* Pending() override { return &pending_; }

    // Takes up to `most` next events. Returns 259 at the end, 1734 if they are too large for one
    // answer, 1223 if the operation is cancelled. A cancelled read does not move the cursor.
    virtual DWORD Take(std::size_t most, std::vector<events::EventPlace>& events,
                       calls::Operation& operation) = 0;

protected:
    explicit Reader(ResultCursor cursor);

    // As Take. Requires lock_.
    DWORD Read(std::size_t most, std::vector<events::EventPlace>& events,
               calls::Operation& operation);

    platform::Lock lock_;
    ResultCursor cursor_;  // guarded by lock_

private:
    const std::vector<std::wstring> foldedChannels_;
    const bool reverse_;
    calls::PendingOperations pending_;
};

}  // namespace replay::results
