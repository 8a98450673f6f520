#include "replay/script/pace.h"

#include <windows.h>

namespace replay::script {
namespace {

std::int64_t Ticks() {
    LARGE_INTEGER ticks{};
    QueryPerformanceCounter(&ticks);
    return ticks.QuadPart;
}

std::int64_t TicksPerSecond() {
    LARGE_INTEGER frequency{};
    QueryPerformanceFrequency(&frequency);
    return frequency.QuadPart;
}

}  // namespace

void Pace::Reset() {
    SetAll({});
    on_ = false;
}

void Pace::Set(calls::ApiFunction function, Cost cost) {
    const auto index = static_cast<std::size_t>(function);
    perCall_[index] = cost.call;
    perEvent_[index] = cost.event;
    on_ = true;
}

void Pace::SetAll(Cost cost) {
    for (std::size_t i = 0; i < calls::kApiFunctionCount; ++i) {
        Set(static_cast<calls::ApiFunction>(i), cost);
    }
}

void Pace::Spend(calls::ApiFunction function, std::uint64_t events) const {
    const auto index = static_cast<std::size_t>(function);
    const std::uint64_t microseconds = perCall_[index] + perEvent_[index] * events;
    if (microseconds == 0) {
        return;
    }
    const std::int64_t end =
        Ticks() + static_cast<std::int64_t>(microseconds) * TicksPerSecond() / 1'000'000;
    while (Ticks() < end) {
        YieldProcessor();
    }
}

}  // namespace replay::script
