#include "endurance/faults/expected_details.h"

#include <winevt.h>

#include "endurance/faults/story_channels.h"
#include "window/expected/expected_texts.h"

namespace tavrin::test {
namespace {

// Returns false for the recorded provider that is not registered.
bool IsRegistered(const std::wstring& provider) {
    return provider != L"Gone-Provider";
}

}  // namespace

std::wstring ExpectedDetails::Of(const RecordedEvent& event) {
    const DWORD opened = Open();
    if (opened != ERROR_SUCCESS) {
        return opened == ERROR_NOT_FOUND ? kEventGoneText : L"";
    }
    DWORD refusal = service_.Call(L"EvtOpenPublisherMetadata");
    if (refusal == ERROR_SUCCESS && IsRegistered(event.provider)) {
        return Message(event);
    }
    refusal = refusal == ERROR_SUCCESS ? ERROR_FILE_NOT_FOUND : refusal;
    return refusal == ERROR_FILE_NOT_FOUND ? Fallback(event) : L"";
}

DWORD ExpectedDetails::Open() {
    for (const wchar_t* function : {L"EvtCreateBookmark", L"EvtQuery", L"EvtSeek"}) {
        const DWORD refusal = service_.Call(function);
        if (refusal != ERROR_SUCCESS) {
            return refusal;
        }
    }
    if (service_.Call(L"EvtNext") != ERROR_SUCCESS) {
        return ERROR_NOT_FOUND;
    }
    if (!contextRefusal_) {
        contextRefusal_ = service_.Call(L"EvtCreateRenderContext");
    }
    return *contextRefusal_ != ERROR_SUCCESS ? *contextRefusal_ : RenderRecordId();
}

DWORD ExpectedDetails::RenderRecordId() {
    const DWORD refusal = service_.Call(L"EvtRender");
    return refusal == ERROR_INSUFFICIENT_BUFFER ? service_.Call(L"EvtRender") : refusal;
}

std::wstring ExpectedDetails::Message(const RecordedEvent& event) {
    const DWORD refusal = service_.Call(L"EvtFormatMessage");
    const DWORD answer = refusal != ERROR_SUCCESS ? refusal
                         : event.message          ? ERROR_INSUFFICIENT_BUFFER
                                                  : ERROR_EVT_MESSAGE_NOT_FOUND;
    if (answer == ERROR_EVT_MESSAGE_NOT_FOUND) {
        return Fallback(event);
    }
    if (answer != ERROR_INSUFFICIENT_BUFFER) {
        return L"";
    }
    // A failed call reports no size, so the second call gets too small a buffer.
    if (service_.Call(L"EvtFormatMessage") == ERROR_SUCCESS && refusal == ERROR_SUCCESS) {
        return *event.message;
    }
    // The third call passes no provider, which gives only forwarded events a message.
    service_.Call(L"EvtFormatMessage");
    return L"";
}

std::wstring ExpectedDetails::Fallback(const RecordedEvent& event) {
    const DWORD refusal = service_.Call(L"EvtRender");
    std::wstring data;
    // As above, a failed call reports no size.
    if (refusal == ERROR_SUCCESS || refusal == ERROR_INSUFFICIENT_BUFFER) {
        const bool isRendered = service_.Call(L"EvtRender") == ERROR_SUCCESS;
        data = isRendered && refusal == ERROR_SUCCESS ? DataText(event) : L"";
    }
    return FallbackDescription(event.eventId, event.provider, data);
}

}  // namespace tavrin::test
