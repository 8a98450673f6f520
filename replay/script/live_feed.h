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

// Makes events arrive while the service runs and tells the subscriptions. Whoever asks for events
// calls CarryOutDue() first; a thread does so for those who only wait, once there is a
// subscription, and has the subscriptions look at their channels' files.
class LiveFeed {
public:
    explicit LiveFeed(std::function<std::shared_ptr<recording::Recording>()> recording)
        : recording_(std::move(recording)) {}

    void Schedule(std::vector<DueChange> changes);

    // Carries out the changes that have come due.
    void CarryOutDue();

    // Appends an event at once; false if there is no such channel or the XML is damaged.
    bool Arrive(const DueChange& change);

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
