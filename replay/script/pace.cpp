#include "replay/script/pace.h"

#include <mutex>
#include <shared_mutex>
#include <utility>

namespace replay::script {

void Pace::Replace(const std::vector<PaceSetting>& paces, std::vector<ScanSetting> scans) {
    const std::lock_guard guard(lock_);
    costs_.fill({});
    for (const PaceSetting& pace : paces) {
        for (std::size_t i = 0; i < costs_.size(); ++i) {
            if (!pace.function || *pace.function == static_cast<calls::ApiFunction>(i)) {
                costs_[i] = {.call = pace.call, .event = pace.event};
            }
        }
    }
    scans_ = std::move(scans);
    on_ = !paces.empty() || !scans_.empty();
}

calls::Costs Pace::CostsOf(calls::ApiFunction function,
                           const std::function<bool(const std::wstring&)>& isAbout) const {
    const std::shared_lock guard(lock_);
    calls::Costs costs = costs_[static_cast<std::size_t>(function)];
    for (const ScanSetting& scan : scans_) {
        if (scan.foldedChannel.empty() || isAbout(scan.foldedChannel)) {
            costs.skippedEvent = scan.skip;
        }
    }
    return costs;
}

}  // namespace replay::script
