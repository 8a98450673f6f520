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

// The simulated time of calls of one function, or of all.
struct PaceSetting {
    std::optional<calls::ApiFunction> function;
    std::chrono::microseconds call{};
    std::chrono::microseconds event{};  // per event that the call handles
};

// The simulated time per event that a query's filter skips.
struct ScanSetting {
    std::wstring foldedChannel;  // empty: any
    std::chrono::microseconds skip{};
};

// Simulates how long calls of a real service take. Thread-safe.
class Pace {
public:
    bool IsOn() const { return on_.load(std::memory_order_relaxed); }

    // Later settings override earlier ones.
    void Replace(const std::vector<PaceSetting>& paces, std::vector<ScanSetting> scans);

    // Returns the costs of a call. `isAbout` returns whether it concerns the channel with this
    // folded name.
    calls::Costs CostsOf(calls::ApiFunction function,
                         const std::function<bool(const std::wstring&)>& isAbout) const;

private:
    std::atomic<bool> on_{false};
    mutable platform::Lock lock_;
    std::array<calls::Costs, calls::kApiFunctionCount> costs_{};  // guarded by lock_
    std::vector<ScanSetting> scans_;                              // guarded by lock_
};

}  // namespace replay::script
