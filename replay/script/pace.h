#pragma once

#include "replay/calls/api_function.h"
#include "replay/calls/operation.h"
#include "replay/platform/lock.h"

#include <array>
#include <atomic>
#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace replay::script {

// The time that calls of one function take, or of all.
struct PaceSetting {
    std::optional<calls::ApiFunction> function;
    std::chrono::microseconds call{};
    std::chrono::microseconds event{};  // for each event that the call handles
};

// The time of each event that the filter of a query passes over.
struct ScanSetting {
    std::wstring foldedChannel;  // empty: any
    std::chrono::microseconds skip{};
};

// Makes calls take the time that they take against a real service. Safe on any thread.
class Pace {
public:
    bool IsOn() const { return on_.load(std::memory_order_relaxed); }

    // Later settings win over former ones.
    void Replace(const std::vector<PaceSetting>& paces, std::vector<ScanSetting> scans);

    // The costs of a call. `isAbout` tells whether it is about the channel of this folded name.
    calls::Costs CostsOf(calls::ApiFunction function,
                         const std::function<bool(const std::wstring&)>& isAbout) const;

private:
    std::atomic<bool> on_{false};
    mutable platform::Lock lock_;
    std::array<calls::Costs, calls::kApiFunctionCount> costs_{};  // guarded by lock_
    std::vector<ScanSetting> scans_;                              // guarded by lock_
};

}  // namespace replay::script
