#include "replay/events/synthetic_source.h"

#include "replay/text/event_time.h"
#include "replay/text/utf8.h"
#include "replay/text/xml_text.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace replay::events {
namespace {

constexpr std::uint64_t kFirstEventTime = 133'801'632'000'000'000;  // 2025-01-01T00:00:00Z
constexpr std::size_t kUsualXmlSize = 720;
constexpr std::uint32_t kEventIds = 50;
constexpr std::string_view kComputer = "SYNTHETIC";

// Hashes an ordinal. Everything that differs between events is derived from the hash.
std::uint64_t Spread(std::uint64_t ordinal) {
    std::uint64_t bits = ordinal + 0x9E3779B97F4A7C15U;
    bits = (bits ^ (bits >> 30)) * 0xBF58476D1CE4E5B9U;
    bits = (bits ^ (bits >> 27)) * 0x94D049BB133111EBU;
    return bits ^ (bits >> 31);
}

std::uint32_t EventId(std::uint64_t bits) {
    return 1000 + static_cast<std::uint32_t>((bits >> 16) % kEventIds);
}

std::uint32_t ProcessId(std::uint64_t bits) {
    return 4 * (1 + static_cast<std::uint32_t>((bits >> 24) & 0x7FFU));
}

std::uint8_t Level(std::uint64_t bits, const std::vector<std::uint8_t>& levels) {
    return levels[(bits >> 40) % levels.size()];
}

}  // namespace

SyntheticSource::SyntheticSource(std::wstring_view channel, SyntheticPlan plan)
    : EventSource(channel),
      plan_(std::move(plan)),
      channelUtf8_(text::ToUtf8(channel)),
      encodedChannel_(text::EncodeXml(channelUtf8_)) {
    plan_.events = std::min(plan_.events, kMostSyntheticEvents);
    if (plan_.levels.empty()) {
        plan_.levels = {4};
    }
    if (!(plan_.eventsPerSecond > 0)) {
        plan_.eventsPerSecond = 1.0;
    }
    const std::uint32_t providers = std::max(plan_.providers, 1U);
    for (std::uint32_t i = 1; i <= providers; ++i) {
        char name[32];
        std::snprintf(name, sizeof name, "Synthetic-Provider-%02u", i);
        providers_.emplace_back(name);
    }
}

std::uint64_t SyntheticSource::Bytes() const {
    return plan_.events * kUsualXmlSize;
}

std::size_t SyntheticSource::XmlSize(std::uint64_t) const {
    return kUsualXmlSize;
}

std::uint64_t SyntheticSource::Time(std::uint64_t ordinal) const {
    return kFirstEventTime +
           static_cast<std::uint64_t>(static_cast<double>(ordinal) *
                                      (text::kTicksPerSecond / plan_.eventsPerSecond));
}

const std::string& SyntheticSource::Provider(std::uint64_t ordinal) const {
    return providers_[Spread(ordinal) % providers_.size()];
}

EventFacts SyntheticSource::Facts(std::uint64_t ordinal) const {
    return {ordinal + 1, Time(ordinal), Provider(ordinal)};
}

SystemFields SyntheticSource::System(std::uint64_t ordinal) const {
    const std::uint64_t bits = Spread(ordinal);
    SystemFields fields;
    fields.providerName = Provider(ordinal);
    fields.eventId = static_cast<std::uint16_t>(EventId(bits));
    fields.version = std::uint8_t{0};
    fields.level = Level(bits, plan_.levels);
    fields.task = std::uint16_t{0};
    fields.opcode = std::uint8_t{0};
    fields.keywords = MadeEvent().keywords;
    fields.timeCreated = Time(ordinal);
    fields.recordId = ordinal + 1;
    fields.processId = ProcessId(bits);
    fields.threadId = ProcessId(bits) + 4;
    fields.channel = encodedChannel_;
    fields.computer = kComputer;
    return fields;
}

MadeEvent SyntheticSource::Make(std::uint64_t ordinal) const {
    const std::uint64_t bits = Spread(ordinal);
    MadeEvent event;
    event.provider = Provider(ordinal);
    event.eventId = EventId(bits);
    event.level = Level(bits, plan_.levels);
    event.time = Time(ordinal);
    event.recordId = ordinal + 1;
    event.processId = ProcessId(bits);
    event.threadId = event.processId + 4;
    event.channel = channelUtf8_;
    event.computer = kComputer;
    event.data = std::to_string(ordinal + 1);
    return event;
}

std::string SyntheticSource::Message(std::uint64_t ordinal) const {
    return "Synthetic event " + std::to_string(ordinal + 1) + " of " + Provider(ordinal) + ".";
}

std::string SyntheticSource::Xml(std::uint64_t ordinal) const {
    return MakeEventXml(Make(ordinal));
}

std::string SyntheticSource::RenderedXml(std::uint64_t ordinal) const {
    MadeEvent event = Make(ordinal);
    event.message = Message(ordinal);
    return MakeEventXml(event);
}

std::optional<std::string> SyntheticSource::Rendering(std::uint64_t ordinal,
                                                      RenderingPart part) const {
    if (part != RenderingPart::kMessage) {
        return std::nullopt;
    }
    return Message(ordinal);
}

std::optional<std::uint64_t> SyntheticSource::Find(std::uint64_t recordId) const {
    if (recordId == 0 || recordId > plan_.events) {
        return std::nullopt;
    }
    return recordId - 1;
}

bool SyntheticSource::HasMessageOf(std::string_view provider) const {
    return std::ranges::find(providers_, provider) != providers_.end();
}

}  // namespace replay::events
