#include "eventlog/records/event_rendering.h"

#include <memory>
#include <stdexcept>
#include <string>

#include "base/thread_slot.h"
#include "eventlog/service/system_values.h"

namespace tavrin::eventlog {
namespace {

// Made on a thread's first render, freed when the thread ends. A context that cannot be made is not
// tried again.
struct RenderState {
    SystemValuesBuffer buffer = SystemValuesBuffer(kSystemValuesBytes);
    UniqueEvt context = CreateSystemValuesContext();
};

// All zero if the time cannot be converted.
CalendarTime LocalCalendarTime(const FILETIME& utc) {
    FILETIME local{};
    SYSTEMTIME fields{};
    if (FileTimeToLocalFileTime(&utc, &local)) {
        FileTimeToSystemTime(&local, &fields);
    }
    return {fields.wYear, fields.wMonth, fields.wDay, fields.wHour, fields.wMinute, fields.wSecond};
}

EventRecordPtr MakeRecord(const SystemValues& values) {
    return std::make_shared<const EventRecord>(
        values.recordId, values.eventId, values.processId,
        EffectiveLevel(values.level, values.keywords), LocalCalendarTime(values.timeCreated),
        values.providerName.data(), ShortSourceName(values.providerName), values.keywords);
}

}  // namespace

std::uint32_t RenderEventRecord(EVT_HANDLE event, EventRecordList& destination) {
    static base::ThreadSlot<RenderState> slot;
    RenderState& state = slot.Get();
    if (!state.context) {
        throw std::runtime_error("EvtCreateRenderContext failed");
    }
    const RenderOutcome outcome = RenderSystemValues(state.context.get(), event, state.buffer);
    if (outcome.firstCode == ERROR_INSUFFICIENT_BUFFER && !outcome.rendered) {
        throw std::runtime_error("EvtRender failed: " + std::to_string(outcome.lastCode));
    }
    // Any other failure is only returned. The record is made from the thread's previous render, so
    // that no event is missing from the list.
    destination.push_back(MakeRecord(ReadSystemValues(state.buffer)));
    return outcome.firstCode;
}

}  // namespace tavrin::eventlog
