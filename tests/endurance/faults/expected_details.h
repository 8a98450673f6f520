#pragma once

#include <optional>
#include <string>

#include "endurance/faults/faulty_service.h"
#include "support/recording.h"

namespace tavrin::test {

// Computes what the details pane shows of a selected event when a service call fails.
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
    std::optional<DWORD> contextRefusal_;  // the program tries to create the context only once
};

}  // namespace tavrin::test
