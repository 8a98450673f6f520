#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "event_maker.h"
#include "lock.h"
#include "recording.h"
#include "script_line.h"
#include "subscription.h"

namespace replay {

// What a script lets happen in a channel at a given time.
struct DueChange {
    std::uint64_t atMs = 0;  // after the script was taken up
    std::wstring channel;
    bool clear = false;  // the channel is cleared; otherwise an event arrives
    std::string xml;     // the event; empty: it is made from `event`
    MadeEvent event;
};

// The change of an "arrive" or "clear" line; nothing if the line is wrong.
std::optional<DueChange> ReadDueChange(const ScriptLine& line);

// Makes events arrive while the service runs and tells the subscriptions. Whoever asks for events
// calls CarryOutDue() first; a thread does so for those who only wait, once there is a
// subscription, and has the subscriptions look at their channels' files.
class LiveFeed {
public:
    explicit LiveFeed(std::function<std::shared_ptr<Recording>()> recording)
        : recording_(std::move(recording)) {}

    void Schedule(std::vector<DueChange> changes);

    // Carries out the changes that have come due.
    void CarryOutDue();

    // Appends an event at once; false if there is no such channel or the XML is damaged.
    bool Arrive(const DueChange& change);

    void Watch(const std::shared_ptr<Subscription>& subscription);

private:
    void NotifyAll();
    void StartWatching();

    std::function<std::shared_ptr<Recording>()> recording_;
    Lock lock_;
    std::vector<DueChange> due_;                              // guarded by lock_
    std::uint64_t startMs_ = 0;                               // guarded by lock_
    std::vector<std::weak_ptr<Subscription>> subscriptions_;  // guarded by lock_
    bool watching_ = false;                                   // guarded by lock_
};

}  // namespace replay
