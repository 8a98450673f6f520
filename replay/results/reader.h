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

// What events are read from: a query or a subscription. Safe on any thread.
class Reader : public calls::Object {
public:
    // None of these waits for a read that is under way.
    bool IsAbout(std::wstring_view foldedChannel) const override;
    bool IsReverse() const { return reverse_; }
    calls::PendingOperations* Pending() override { return &pending_; }

    // The next events: 259 at the end, 1734 when they are too large for one answer, 1223 when the
    // operation is cancelled. A cancelled read moves nothing.
    virtual DWORD Take(std::size_t most, std::vector<events::EventPlace>& events,
                       calls::Operation& operation) = 0;

protected:
    explicit Reader(ResultCursor cursor);

    // Take, with lock_ held.
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
