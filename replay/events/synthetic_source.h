#pragma once

#include "replay/events/event_maker.h"
#include "replay/events/event_source.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace replay::events {

constexpr std::uint64_t kMostSyntheticEvents = 2'000'000;

// The parameters of a synthetic channel.
struct SyntheticPlan {
    std::uint64_t events = 0;
    std::uint32_t providers = 1;
    std::vector<std::uint8_t> levels = {4};
    double eventsPerSecond = 1.0;
};

// Events generated on demand, so they take no memory. A plan always yields the same events. Record
// ids run from 1 to the number of events.
class SyntheticSource final : public EventSource {
public:
    SyntheticSource(std::wstring_view channel, SyntheticPlan plan);

    std::uint64_t Count() const override { return plan_.events; }
    std::uint64_t Bytes() const override;
    EventFacts Facts(std::uint64_t ordinal) const override;
    SystemFields System(std::uint64_t ordinal) const override;
    std::string Xml(std::uint64_t ordinal) const override;
    std::string RenderedXml(std::uint64_t ordinal) const override;
    std::size_t XmlSize(std::uint64_t) const override;
    std::optional<std::string> Rendering(std::uint64_t ordinal, RenderingPart part) const override;
    bool CarriesRendering(std::uint64_t) const override { return false; }
    std::optional<std::uint64_t> Find(std::uint64_t recordId) const override;
    bool HasMessageOf(std::string_view provider) const override;

private:
    MadeEvent Make(std::uint64_t ordinal) const;
    std::string Message(std::uint64_t ordinal) const;
    std::uint64_t Time(std::uint64_t ordinal) const;
    const std::string& Provider(std::uint64_t ordinal) const;

    SyntheticPlan plan_;
    std::string channelUtf8_;
    std::string encodedChannel_;
    std::vector<std::string> providers_;
};

}  // namespace replay::events
