#include "eventlog/event_rendering.h"

#include <cstdint>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>

#include "eventlog/event_record.h"
#include "eventlog/system_values.h"
#include "eventlog/thread_slot.h"

namespace tavrin::eventlog {
namespace {

// Breaks times into local calendar fields. Events come in bursts: one of the same second
// as the one before is spared the conversion, the dearest part of making a record.
class LocalCalendar {
public:
    // All zero when the time cannot be told in local time.
    CalendarTime TimeOf(const FILETIME& utc) {
        const std::uint64_t second = SecondOf(utc);
        if (second != second_ || second == kNoSecond) {
            SYSTEMTIME fields{};
            FILETIME local{};
            const bool converted =
                FileTimeToLocalFileTime(&utc, &local) && FileTimeToSystemTime(&local, &fields);
            second_ = converted ? second : kNoSecond;
            time_ = {fields.wYear, fields.wMonth,  fields.wDay,
                     fields.wHour, fields.wMinute, fields.wSecond};
        }
        return time_;
    }

private:
    static constexpr std::uint64_t kTicksPerSecond = 10'000'000;
    static constexpr std::uint64_t kNoSecond = std::numeric_limits<std::uint64_t>::max();

    // From 2^63 on a time is none, also in the last second before, which is cut in two.
    static std::uint64_t SecondOf(const FILETIME& time) {
        const std::uint64_t ticks = std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime;
        return ticks >> 63 != 0 ? kNoSecond : ticks / kTicksPerSecond;
    }

    std::uint64_t second_ = kNoSecond;
    CalendarTime time_;
};

// Made on a thread's first render, freed when the thread ends. A context that could
// not be made is not tried again.
struct RenderState {
    SystemValuesBuffer buffer = SystemValuesBuffer(kSystemValuesBytes);
    UniqueEvt context = CreateSystemValuesContext();
    LocalCalendar calendar;
};

EventRecordPtr MakeRecord(const SystemValues& values, LocalCalendar& calendar) {
    return std::make_shared<const EventRecord>(
        values.recordId, values.eventId, values.processId,
        EffectiveLevel(values.level, values.keywords), calendar.TimeOf(values.timeCreated),
        values.providerName, ShortSourceName(values.providerName), values.keywords);
}

}  // namespace

std::uint32_t RenderEventRecord(EVT_HANDLE event, EventRecordList& destination) {
    static ThreadSlot<RenderState> slot;
    RenderState& state = slot.Get();
    if (!state.context) {
        throw std::runtime_error("EvtCreateRenderContext failed");
    }
    const RenderCodes codes = RenderSystemValues(state.context.get(), event, state.buffer);
    if (codes.first == ERROR_INSUFFICIENT_BUFFER && codes.last != ERROR_SUCCESS) {
        throw std::runtime_error("EvtRender failed: " + std::to_string(codes.last));
    }
    // Any other failure is only returned: the record is made from what the thread's
    // previous render left, so that no event is missing from the list.
    destination.push_back(MakeRecord(ReadSystemValues(state.buffer), state.calendar));
    return codes.first;
}

}  // namespace tavrin::eventlog
