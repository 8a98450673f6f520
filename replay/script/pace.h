#pragma once

#include "replay/calls/api_function.h"

#include <array>
#include <atomic>
#include <cstdint>

namespace replay::script {

// Makes calls take the time that they take against a real service.
class Pace {
public:
    // Microseconds for each call of a function, and for each event that it handles.
    struct Cost {
        std::uint32_t call = 0;
        std::uint32_t event = 0;
    };

    bool IsOn() const { return on_.load(std::memory_order_relaxed); }

    void Reset();
    void Set(calls::ApiFunction function, Cost cost);
    void SetAll(Cost cost);

    // Spends the time of one call that handled so many events. Does not sleep: costs are far
    // shorter than the shortest sleep.
    void Spend(calls::ApiFunction function, std::uint64_t events) const;

private:
    std::atomic<bool> on_{false};
    std::array<std::atomic<std::uint32_t>, calls::kApiFunctionCount> perCall_{};
    std::array<std::atomic<std::uint32_t>, calls::kApiFunctionCount> perEvent_{};
};

}  // namespace replay::script
