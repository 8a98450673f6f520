#pragma once

#include "replay/calls/call_log.h"
#include "replay/calls/handle_table.h"
#include "replay/platform/lock.h"
#include "replay/recording/recording.h"
#include "replay/script/faults.h"
#include "replay/script/live_feed.h"
#include "replay/script/pace.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <windows.h>

namespace replay::service {

// The process-wide state of the service. Created from the environment at the first call and never
// destroyed, because calls and threads may outlive all other objects.
class Service {
public:
    // Returns the service; the first call creates it.
    static Service& Get();

    std::shared_ptr<recording::Recording> CurrentRecording() const;
    void UseRecording(std::shared_ptr<recording::Recording> recording);
    // Serves the recording that the environment names.
    void UseRecordingOfEnvironment();

    // Replaces the script. Wrong lines are reported and skipped; then returns false.
    bool UseScript(std::wstring_view text);

    // Restores the initial state: no counts, no handles.
    void Reset();

    std::uint64_t CallsOf(calls::ApiFunction function) const;
    // Counts a call and returns its id.
    calls::CallId Count(calls::ApiFunction function);
    std::uint64_t MillisecondsSinceStart() const;

    // Writes the ledger to the report file, if the environment names one.
    void WriteReport();
    // The same during process exit.
    void WriteLastReport();

    calls::HandleTable handles;
    calls::CallLog calls;
    script::Faults faults;
    script::Pace pace;
    script::LiveFeed live;

private:
    Service();

    mutable platform::Lock lock_;
    std::shared_ptr<recording::Recording> recording_;  // guarded by lock_
    std::array<std::atomic<std::uint64_t>, calls::kApiFunctionCount> counts_{};
    std::atomic<std::uint64_t> sequence_{0};
    const std::uint64_t startMs_;
    const std::wstring reportPath_;
};

// Returns the service, or null if it was never called.
Service* ServiceIfStarted();

}  // namespace replay::service
