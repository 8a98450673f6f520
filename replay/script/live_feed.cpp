#include "replay/script/live_feed.h"

#include "replay/platform/module.h"
#include "replay/platform/notice.h"

#include <algorithm>
#include <mutex>
#include <thread>
#include <utility>

#include <windows.h>

namespace replay::script {
namespace {

constexpr DWORD kPollPeriodMs = 50;

}  // namespace

void LiveFeed::Schedule(std::vector<DueChange> changes) {
    {
        const std::lock_guard guard(lock_);
        startMs_ = GetTickCount64();
        due_ = std::move(changes);
        std::ranges::stable_sort(due_, {}, &DueChange::atMs);
    }
    CarryOutDue();
}

bool LiveFeed::Arrive(const DueChange& change) {
    const auto channel = recording_()->Find(change.channel);
    if (channel == nullptr) {
        platform::Notice(L"no channel \"" + change.channel + L"\" for an event to arrive in");
        return false;
    }
    bool whole = true;
    if (change.clear) {
        channel->Clear();
    } else if (change.xml.empty()) {
        whole = channel->Append(change.event);
    } else {
        whole = channel->AppendXml(change.xml);
    }
    NotifyAll();
    return whole;
}

void LiveFeed::Watch(const std::shared_ptr<results::Subscription>& subscription) {
    const std::lock_guard guard(lock_);
    std::erase_if(subscriptions_, [](const auto& watched) { return watched.expired(); });
    subscriptions_.push_back(subscription);
    if (!std::exchange(watching_, true)) {
        StartWatching();
    }
}

void LiveFeed::CarryOutDue() {
    std::vector<DueChange> now;
    {
        const std::lock_guard guard(lock_);
        if (due_.empty()) {
            return;
        }
        const std::uint64_t elapsed = GetTickCount64() - startMs_;
        const auto later = std::ranges::upper_bound(due_, elapsed, {}, &DueChange::atMs);
        now.assign(due_.begin(), later);
        due_.erase(due_.begin(), later);
    }
    for (const DueChange& change : now) {
        Arrive(change);
    }
}

void LiveFeed::NotifyAll() {
    std::vector<std::shared_ptr<results::Subscription>> subscriptions;
    {
        const std::lock_guard guard(lock_);
        for (const auto& watched : subscriptions_) {
            if (auto subscription = watched.lock()) {
                subscriptions.push_back(std::move(subscription));
            }
        }
    }
    for (const auto& subscription : subscriptions) {
        subscription->Notify();
    }
}

void LiveFeed::StartWatching() {
    // The thread runs until the process ends, so its code must stay loaded.
    platform::PinThisModule();
    std::thread([this] {
        for (;;) {
            Sleep(kPollPeriodMs);
            CarryOutDue();
            NotifyAll();
        }
    }).detach();
}

}  // namespace replay::script
