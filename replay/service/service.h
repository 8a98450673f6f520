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

// The state of the service, one for the process. It is set up from the environment at the first
// call and never destroyed: calls and threads may outlive everything else.
class Service {
public:
    // The service; the first call sets it up.
    static Service& Get();

    std::shared_ptr<recording::Recording> CurrentRecording() const;
    void UseRecording(std::shared_ptr<recording::Recording> recording);
    // The recording that the environment names.
    void UseRecordingOfEnvironment();

    // Puts a script in the place of the former one. False when a line is wrong: it is named in a
    // notice and left out.
    bool UseScript(std::wstring_view text);

    // Returns to the start: nothing counted, no handle known.
    void Reset();

    std::uint64_t CallsOf(calls::ApiFunction function) const;
    // Counts a call and numbers it.
    calls::CallId Count(calls::ApiFunction function);
    std::uint64_t MillisecondsSinceStart() const;

    // Writes the ledger to the file that the environment names, if any.
    void WriteReport();
    // The same while the process ends.
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

// The service; null if it was never called.
Service* ServiceIfStarted();

}  // namespace replay::service
