// Makes records from whatever a service may write into the buffer of the system values: wrong
// types, values of other events, unterminated strings, output before a failure.

#include <algorithm>
#include <cstring>
#include <stdexcept>

#include <windows.h>
#include <winevt.h>

#include "eventlog/records/event_record.h"
#include "eventlog/records/event_rendering.h"
#include "input.h"
#include "tests/support/fresh_thread.h"

using namespace tavrin;
using fuzz::Require;

namespace {

FuzzedDataProvider* g_input = nullptr;
EVT_VARIANT g_values[EvtSystemPropertyIdEND];  // the values written last

constexpr DWORD kCodes[] = {ERROR_SUCCESS, ERROR_SUCCESS, ERROR_SUCCESS, ERROR_INSUFFICIENT_BUFFER,
                            ERROR_EVT_QUERY_RESULT_STALE};
constexpr DWORD kMostNeeded = 20'000;
constexpr int kMostRenders = 10;

// Returns an aligned position in the buffer or at its end, or null.
const wchar_t* AnyText(void* buffer, DWORD size) {
    const auto units = static_cast<std::uint32_t>(size / sizeof(wchar_t));
    const auto at = g_input->ConsumeIntegralInRange<std::uint32_t>(0, units);
    return at == 0 ? nullptr : static_cast<const wchar_t*>(buffer) + at;
}

void WriteAnything(void* buffer, DWORD size) {
    auto* const values = static_cast<EVT_VARIANT*>(buffer);
    for (int i = 0; i < EvtSystemPropertyIdEND; ++i) {
        values[i].UInt64Val = g_input->ConsumeIntegral<std::uint64_t>();
        values[i].Count = g_input->ConsumeIntegral<std::uint8_t>();
        values[i].Type = g_input->ConsumeIntegral<std::uint8_t>();
    }
    values[EvtSystemProviderName].StringVal = AnyText(buffer, size);
    std::memcpy(g_values, values, sizeof g_values);
    // After the values come strings, terminated or not.
    const std::wstring text = fuzz::WideText(g_input->ConsumeRandomLengthString());
    auto* const behind = reinterpret_cast<wchar_t*>(values + EvtSystemPropertyIdEND);
    const std::size_t room = (size - sizeof g_values) / sizeof(wchar_t);
    if (!text.empty()) {
        for (std::size_t i = 0; i < room; ++i) {
            behind[i] = text[i % text.size()];
        }
    }
}

void CheckRecord(const eventlog::EventRecord& record) {
    Require(std::ranges::find(record.providerName, L'\0') != std::end(record.providerName),
            "the provider's name is terminated");
    Require(record.processId.size() <= 10 && !record.processId.empty(), "a process id is a number");
    Require(record.timeText.size() >= std::size(L"00/00/00 00:00:00") - 1,
            "a time text is complete even if the time is invalid");
    Require(eventlog::LevelName(record) != nullptr, "every level has a name");
}

void CheckValues(const eventlog::EventRecord& record) {
    Require(record.recordId == g_values[EvtSystemEventRecordId].UInt64Val &&
                record.eventId == g_values[EvtSystemEventID].UInt16Val &&
                record.keywords == g_values[EvtSystemKeywords].UInt64Val,
            "the record holds the values that were rendered");
}

void RenderOnce() {
    eventlog::EventRecordList records;
    try {
        const std::uint32_t code = eventlog::RenderEventRecord(nullptr, records);
        Require(records.size() == 1, "a record is made");
        CheckRecord(*records.front());
        if (code == ERROR_SUCCESS) {
            CheckValues(*records.front());
        }
    } catch (const std::runtime_error&) {
        Require(records.empty(), "a failed render makes no record");
    }
}

}  // namespace

// The linker prefers these functions to those of the library.

EVT_HANDLE EvtCreateRenderContext(DWORD, LPCWSTR*, DWORD) {
    return g_input->ConsumeIntegral<std::uint8_t>() == 0xFF ? nullptr
                                                            : reinterpret_cast<EVT_HANDLE>(1);
}

BOOL EvtRender(EVT_HANDLE, EVT_HANDLE, DWORD, DWORD size, PVOID buffer, PDWORD used, PDWORD count) {
    const DWORD code = g_input->PickValueInArray(kCodes);
    *used = g_input->ConsumeIntegralInRange<DWORD>(0, kMostNeeded);
    *count = EvtSystemPropertyIdEND;
    SetLastError(code);
    // A service may write before it fails.
    if (code == ERROR_SUCCESS || g_input->ConsumeBool()) {
        WriteAnything(buffer, size);
    }
    return code == ERROR_SUCCESS;
}

BOOL EvtClose(EVT_HANDLE) {
    return TRUE;
}

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    g_input = &input;
    // Render state is per thread. A fresh thread isolates this input from the previous one.
    test::OnFreshThread([&input] {
        for (int renders = 0; renders < kMostRenders && input.remaining_bytes() > 0; ++renders) {
            RenderOnce();
        }
    });
    return 0;
}
