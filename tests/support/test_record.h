#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "base/chunked_list.h"
#include "eventlog/records/event_record.h"

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

template <typename T>
std::vector<T> Elements(const base::ChunkedList<T>& list) {
    std::vector<T> elements;
    for (std::size_t i = 0; i < list.size(); ++i) {
        elements.push_back(list[i]);
    }
    return elements;
}

template <typename T>
void Append(base::ChunkedList<T>& list, const std::vector<T>& elements) {
    list.ReserveMore(elements.size());
    for (const T& element : elements) {
        list.Append(element);
    }
}

}  // namespace tavrin::test
