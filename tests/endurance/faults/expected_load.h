#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "endurance/faults/faulty_service.h"
#include "support/recording.h"

namespace tavrin::test {

// Computes the result of a channel's load when a service call fails.
class ExpectedLoad {
public:
    // Subscribes, and reads until the load pauses or ends. `found` holds the events that match the
    // query, newest first. The events and the service must outlive the load.
    ExpectedLoad(std::vector<const RecordedEvent*> found, FaultyService& service);

    // Extend reads on to the next pause, Unlimit to the end.
    void Extend();
    void Unlimit();

    const std::vector<const RecordedEvent*>& loaded() const { return loaded_; }
    DWORD result() const { return result_; }
    bool isWatched() const { return isWatched_; }

private:
    void Watch();
    void Read();
    void ReadPage();
    void Render(const RecordedEvent& event);

    FaultyService& service_;
    std::vector<const RecordedEvent*> found_;
    std::vector<const RecordedEvent*> loaded_;
    std::size_t next_ = 0;
    std::size_t limit_;
    DWORD result_ = ERROR_SUCCESS;
    bool isWatched_ = false;
    bool isOpen_ = false;
    bool isDone_ = false;
    std::optional<bool> hasContext_;
    const RecordedEvent* buffer_;  // the last event that was rendered
};

}  // namespace tavrin::test
