#pragma once

#include "replay/platform/lock.h"
#include "replay/recording/recording.h"
#include "replay/results/subscription.h"
#include "replay/script/due_change.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace replay::script {

// Adds scheduled events to the channels and notifies the subscriptions. Calls that read events
// first execute the changes that are due. From the first subscription on, a thread does so
// periodically and makes the subscriptions check their channels' files.
class LiveFeed {
public:
    // `recording` returns the served recording.
    explicit LiveFeed(std::function<std::shared_ptr<recording::Recording>()> recording)
        : recording_(std::move(recording)) {}

    // Replaces the scheduled changes. Their times count from now.
    void Schedule(std::vector<DueChange> changes);

    // Executes the changes that are due.
    void CarryOutDue();

    // Executes a change at once. Returns false if the channel does not exist or the XML is damaged.
    bool Arrive(const DueChange& change);

    // Notifies the subscription of new events while it exists.
    void Watch(const std::shared_ptr<results::Subscription>& subscription);

private:
    void NotifyAll();
    void StartWatching();

    std::function<std::shared_ptr<recording::Recording>()> recording_;
    platform::Lock lock_;
    std::vector<DueChange> due_;                                       // guarded by lock_
    std::uint64_t startMs_ = 0;                                        // guarded by lock_
    std::vector<std::weak_ptr<results::Subscription>> subscriptions_;  // guarded by lock_
    bool watching_ = false;                                            // guarded by lock_
};

}  // namespace replay::script
