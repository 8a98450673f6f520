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

// Makes events arrive while the service runs, and notifies the subscriptions. Calls that ask for
// events carry out first what is due. Once there is a subscription, a thread does so regularly and
// lets the subscriptions look at their channels' files.
class LiveFeed {
public:
    // `recording` returns the recording that is served.
    explicit LiveFeed(std::function<std::shared_ptr<recording::Recording>()> recording)
        : recording_(std::move(recording)) {}

    // Puts changes in the place of the former ones; their times count from now.
    void Schedule(std::vector<DueChange> changes);

    // Carries out the changes that have come due.
    void CarryOutDue();

    // Appends an event at once; false if there is no such channel or the XML is damaged.
    bool Arrive(const DueChange& change);

    // Notifies the subscription of events from now on, for as long as it lives.
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
