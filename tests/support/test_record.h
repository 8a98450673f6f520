#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "eventlog/records/event_record.h"
#include "eventlog/records/search_index.h"

namespace tavrin::test {

// The fields of a record, with defaults for those that a test does not care about.
struct RecordFacts {
    std::uint64_t recordId = 1;
    std::uint32_t eventId = 1;
    std::uint32_t process = 1;
    std::uint8_t level = 4;
    eventlog::CalendarTime time{};
    const wchar_t* provider = L"P";
    const wchar_t* source = L"P";
};

inline eventlog::EventRecordPtr MakeRecord(const RecordFacts& facts = {}) {
    return std::make_shared<const eventlog::EventRecord>(
        facts.recordId, facts.eventId, facts.process, facts.level, facts.time, facts.provider,
        facts.source, std::uint64_t{0});
}

inline const eventlog::SearchKey& KeyOf(const eventlog::SearchIndex& index, std::size_t record) {
    const eventlog::SearchKeyPlace place = eventlog::PlaceOfKey(record);
    return index.chunks.at(place.chunk).get()[place.offset];
}

}  // namespace tavrin::test
