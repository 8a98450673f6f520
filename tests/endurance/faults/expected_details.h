#pragma once

#include <optional>
#include <string>

#include "endurance/faults/faulty_service.h"
#include "support/recording.h"

namespace tavrin::test {

// What the details pane shows of selected events when the service refuses a call for them.
class ExpectedDetails {
public:
    explicit ExpectedDetails(FaultyService& service) : service_(service) {}

    std::wstring Of(const RecordedEvent& event);

private:
    DWORD Open();
    DWORD RenderRecordId();
    std::wstring Message(const RecordedEvent& event);
    std::wstring Fallback(const RecordedEvent& event);

    FaultyService& service_;
    std::optional<DWORD> contextRefusal_;  // made once, or not at all
};

}  // namespace tavrin::test
