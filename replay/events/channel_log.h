#pragma once

#include "replay/events/event_source.h"
#include "replay/platform/lock.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace replay::events {

// One event of a source.
struct EventPlace {
    std::shared_ptr<EventSource> source;
    std::uint64_t ordinal = 0;  // index in the source
};

// The events of a channel from oldest to newest: the recorded ones and those that arrived since. A
// log only grows; a cleared channel gets a new one. Thread-safe.
class ChannelLog {
public:
    explicit ChannelLog(std::shared_ptr<EventSource> first);

    // Appends events that arrived.
    void Append(std::shared_ptr<EventSource> events);

    // As in EventSource. Ordinals count in the whole log.
    std::uint64_t Count() const;
    std::uint64_t Bytes() const;
    EventFacts Facts(std::uint64_t ordinal) const;
    EventPlace Place(std::uint64_t ordinal) const;
    std::uint64_t NumberInLog(std::uint64_t ordinal) const;
    std::optional<std::uint64_t> FindNumber(std::uint64_t number) const;
    bool HasMessageOf(std::string_view provider) const;

private:
    struct Part {
        std::uint64_t begin = 0;  // ordinal of its first event in the log
        std::shared_ptr<EventSource> events;
    };

    const Part& PartOf(std::uint64_t ordinal) const;  // requires lock_
    std::vector<Part> Parts() const;

    const std::shared_ptr<EventSource> first_;
    const std::uint64_t firstCount_;
    mutable platform::Lock lock_;
    std::vector<Part> arrived_;  // guarded by lock_
    std::uint64_t count_;        // guarded by lock_
};

}  // namespace replay::events
