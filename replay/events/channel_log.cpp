#include "replay/events/channel_log.h"

#include <algorithm>
#include <mutex>
#include <shared_mutex>

namespace replay::events {

ChannelLog::ChannelLog(std::shared_ptr<EventSource> first)
    : first_(std::move(first)), firstCount_(first_->Count()), count_(firstCount_) {}

void ChannelLog::Append(std::shared_ptr<EventSource> events) {
    const std::lock_guard guard(lock_);
    const std::uint64_t begin = count_;
    count_ += events->Count();
    arrived_.push_back({begin, std::move(events)});
}

std::uint64_t ChannelLog::Count() const {
    const std::shared_lock guard(lock_);
    return count_;
}

std::uint64_t ChannelLog::Bytes() const {
    std::uint64_t bytes = 0;
    for (const Part& part : Parts()) {
        bytes += part.events->Bytes();
    }
    return bytes;
}

EventFacts ChannelLog::Facts(std::uint64_t ordinal) const {
    if (ordinal < firstCount_) {
        return first_->Facts(ordinal);
    }
    const std::shared_lock guard(lock_);
    const Part& part = PartOf(ordinal);
    return part.events->Facts(ordinal - part.begin);
}

EventPlace ChannelLog::Place(std::uint64_t ordinal) const {
    // The first part is immutable, so most events need no lock.
    if (ordinal < firstCount_) {
        return {first_, ordinal};
    }
    const std::shared_lock guard(lock_);
    const Part& part = PartOf(ordinal);
    return {part.events, ordinal - part.begin};
}

std::uint64_t ChannelLog::NumberInLog(std::uint64_t ordinal) const {
    const EventPlace place = Place(ordinal);
    return place.source->NumberInLog(place.ordinal);
}

std::optional<std::uint64_t> ChannelLog::FindNumber(std::uint64_t number) const {
    for (const Part& part : Parts()) {
        if (const auto found = part.events->FindNumber(number)) {
            return part.begin + *found;
        }
    }
    return std::nullopt;
}

bool ChannelLog::HasMessageOf(std::string_view provider) const {
    return std::ranges::any_of(
        Parts(), [provider](const Part& part) { return part.events->HasMessageOf(provider); });
}

const ChannelLog::Part& ChannelLog::PartOf(std::uint64_t ordinal) const {
    const auto after = std::ranges::upper_bound(arrived_, ordinal, {}, &Part::begin);
    return *std::prev(after);
}

std::vector<ChannelLog::Part> ChannelLog::Parts() const {
    std::vector<Part> parts{{0, first_}};
    const std::shared_lock guard(lock_);
    parts.insert(parts.end(), arrived_.begin(), arrived_.end());
    return parts;
}

}  // namespace replay::events
