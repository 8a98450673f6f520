#pragma once

#include <optional>
#include <string>

#include "endurance/faults/faulty_service.h"
#include "window/harness/recording_writer.h"

namespace tavrin::test {

// What the details pane shows of selected events when the service refuses a call for them.
class ExpectedDetails {
public:
    explicit ExpectedDetails(FaultyService& service) : service_(service) {}

    std::wstring Of(const EventSpec& event);

private:
    DWORD Open();
    DWORD RenderRecordId();
    std::wstring Message(const EventSpec& event);
    std::wstring Fallback(const EventSpec& event);

    FaultyService& service_;
    std::optional<DWORD> contextRefusal_;  // made once, or not at all
};

}  // namespace tavrin::test
