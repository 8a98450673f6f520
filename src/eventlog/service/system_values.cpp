#include "eventlog/service/system_values.h"

#include <algorithm>
#include <functional>

namespace tavrin::eventlog {
namespace {

struct RenderCall {
    bool succeeded;
    std::uint32_t code;  // of a call that failed
};

RenderCall Render(EVT_HANDLE context, EVT_HANDLE event, SystemValuesBuffer& buffer, DWORD& used) {
    DWORD propertyCount = 0;
    if (EvtRender(context, event, EvtRenderEventValues, static_cast<DWORD>(buffer.size()),
                  buffer.data(), &used, &propertyCount)) {
        return {true, ERROR_SUCCESS};
    }
    return {false, GetLastError()};
}

// The text if it lies in the buffer with its terminator, otherwise an empty one. After a failed
// render, values can point into storage that the buffer no longer owns.
std::wstring_view TextInside(const SystemValuesBuffer& buffer, const wchar_t* text) {
    const auto* const begin = reinterpret_cast<const wchar_t*>(buffer.data());
    const auto* const end = begin + buffer.size() / sizeof(wchar_t);
    const std::less<> before{};
    if (before(text, begin) || !before(text, end)) {
        return L"";
    }
    const wchar_t* const terminator = std::find(text, end, L'\0');
    return terminator == end ? L"" : std::wstring_view(text, terminator);
}

}  // namespace

UniqueEvt CreateSystemValuesContext() {
    return UniqueEvt(EvtCreateRenderContext(0, nullptr, EvtRenderContextSystem));
}

RenderOutcome RenderSystemValues(EVT_HANDLE context, EVT_HANDLE event, SystemValuesBuffer& buffer) {
    DWORD used = 0;
    const RenderCall first = Render(context, event, buffer, used);
    if (first.succeeded || first.code != ERROR_INSUFFICIENT_BUFFER) {
        return {first.succeeded, first.code, first.code};
    }
    if (used > buffer.size()) {
        // Zeroed: the old values would point into the storage that is freed here.
        buffer.assign(used, std::byte{});
    }
    const RenderCall second = Render(context, event, buffer, used);
    return {second.succeeded, first.code, second.code};
}

SystemValues ReadSystemValues(const SystemValuesBuffer& buffer) {
    const auto* const values = reinterpret_cast<const EVT_VARIANT*>(buffer.data());
    const EVT_VARIANT& level = values[EvtSystemLevel];
    const ULONGLONG time = values[EvtSystemTimeCreated].FileTimeVal;
    return {
        .providerName = TextInside(buffer, values[EvtSystemProviderName].StringVal),
        .eventId = values[EvtSystemEventID].UInt16Val,
        .level = level.Type == EvtVarTypeNull ? std::uint8_t{0} : level.ByteVal,
        .keywords = values[EvtSystemKeywords].UInt64Val,
        .timeCreated = {static_cast<DWORD>(time), static_cast<DWORD>(time >> 32)},
        .recordId = values[EvtSystemEventRecordId].UInt64Val,
        .processId = values[EvtSystemProcessID].UInt32Val,
    };
}

}  // namespace tavrin::eventlog
