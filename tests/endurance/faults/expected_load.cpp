#include "endurance/faults/expected_load.h"

#include <algorithm>
#include <limits>

namespace tavrin::test {
namespace {

constexpr std::size_t kPage = 128;
constexpr std::size_t kPause = 10000;

// The event that the program reads from a buffer of zeros.
const RecordedEvent kNoEvent = {.recordId = 0,
                                .provider = L"",
                                .eventId = 0,
                                .level = 0,
                                .time = L"1601-01-01T00:00:00.0000000Z",
                                .processId = 0};

}  // namespace

ExpectedLoad::ExpectedLoad(std::vector<const RecordedEvent*> found, FaultyService& service)
    : service_(service), found_(std::move(found)), limit_(kPause), buffer_(&kNoEvent) {
    Watch();
    Read();
}

void ExpectedLoad::Extend() {
    limit_ = std::max(limit_, loaded_.size() + kPause);
    Read();
}

void ExpectedLoad::Unlimit() {
    limit_ = std::numeric_limits<std::size_t>::max();
    Read();
}

// The result of the first check for pending events makes no difference.
void ExpectedLoad::Watch() {
    isWatched_ = service_.Call(L"EvtSubscribe") == ERROR_SUCCESS;
    if (isWatched_) {
        service_.Call(L"EvtNext");
    }
}

void ExpectedLoad::Read() {
    while (!isDone_ && result_ == ERROR_SUCCESS && loaded_.size() < limit_) {
        ReadPage();
    }
}

void ExpectedLoad::ReadPage() {
    if (!isOpen_) {
        for (const wchar_t* function : {L"EvtQuery", L"EvtSeek"}) {
            result_ = service_.Call(function);
            if (result_ != ERROR_SUCCESS) {
                return;
            }
        }
        isOpen_ = true;
    }
    const DWORD refusal = service_.Call(L"EvtNext");
    isDone_ = refusal == ERROR_NO_MORE_ITEMS || (refusal == 0 && next_ == found_.size());
    if (isDone_ || refusal != ERROR_SUCCESS) {
        result_ = isDone_ ? ERROR_SUCCESS : refusal;
        return;
    }
    for (const std::size_t end = std::min(next_ + kPage, found_.size()); next_ < end; ++next_) {
        Render(*found_[next_]);
    }
}

void ExpectedLoad::Render(const RecordedEvent& event) {
    if (!hasContext_) {
        hasContext_ = service_.Call(L"EvtCreateRenderContext") == ERROR_SUCCESS;
    }
    if (!*hasContext_) {
        return;
    }
    DWORD refusal = service_.Call(L"EvtRender");
    if (refusal == ERROR_INSUFFICIENT_BUFFER) {
        refusal = service_.Call(L"EvtRender");
        if (refusal != ERROR_SUCCESS) {
            return;  // the program loses this event only
        }
    }
    if (refusal == ERROR_SUCCESS) {
        buffer_ = &event;
    }
    loaded_.push_back(buffer_);
}

}  // namespace tavrin::test
