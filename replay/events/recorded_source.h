#pragma once

#include "replay/events/event_source.h"
#include "replay/platform/event_bytes.h"
#include "replay/text/xml_reader.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace replay::events {

// Recorded events. Refers to their bytes and keeps only an index in memory.
class RecordedSource final : public EventSource {
public:
    // The extent of a read and the damage found in it.
    struct Extent {
        std::size_t end = 0;  // just past the last complete event or "</Events>"
        bool closed = false;  // "</Events>" was seen
        std::vector<text::XmlDamage> damages;
    };

    // Indexes the events in `bytes` and skips damaged ones. Stores in `extent` where the read ended
    // and what was skipped.
    RecordedSource(std::wstring_view channel, std::shared_ptr<const platform::EventBytes> bytes,
                   Extent& extent);

    std::uint64_t Count() const override { return events_.size(); }
    std::uint64_t Bytes() const override { return bytes_->View().size(); }
    EventFacts Facts(std::uint64_t ordinal) const override;
    SystemFields System(std::uint64_t ordinal) const override;
    std::string Xml(std::uint64_t ordinal) const override;
    std::string RenderedXml(std::uint64_t ordinal) const override;
    std::size_t XmlSize(std::uint64_t ordinal) const override;
    std::optional<std::string> Rendering(std::uint64_t ordinal, RenderingPart part) const override;
    std::optional<std::uint32_t> MessageFailure(std::uint64_t ordinal) const override;
    bool CarriesRendering(std::uint64_t ordinal) const override;
    std::optional<std::uint64_t> Find(std::uint64_t recordId) const override;
    bool HasMessageOf(std::string_view provider) const override;

private:
    // Offsets count from the start of the event.
    struct IndexedEvent {
        std::uint64_t begin = 0;  // offset in the bytes
        std::uint32_t length = 0;
        std::uint32_t system = 0;
        std::uint32_t renderingBegin = 0;
        std::uint32_t renderingEnd = 0;  // 0: none
        std::uint64_t recordId = 0;
        std::uint64_t time = 0;
        std::uint32_t provider = 0;  // index in providers_
        bool carriesRendering = false;
    };
    struct Provider {
        std::string name;
        bool hasMessage = false;
    };

    // The parts of an event that the index needs.
    struct EventParts {
        SystemFields system;
        bool hasMessage = false;
    };

    bool ReadEvent(std::size_t begin, Extent& extent);
    static bool ReadParts(text::XmlReader& reader, IndexedEvent& event, EventParts& parts);
    static void ReadRendering(text::XmlReader& reader, IndexedEvent& event, EventParts& parts);
    void AddToIndex(IndexedEvent event, const EventParts& parts);
    std::uint32_t ProviderIndex(std::string_view rawName);
    std::string_view Event(const IndexedEvent& event) const;
    std::string_view RenderingInfo(const IndexedEvent& event) const;

    std::string channelUtf8_;
    std::shared_ptr<const platform::EventBytes> bytes_;
    std::vector<IndexedEvent> events_;
    std::vector<Provider> providers_;
    std::unordered_map<std::string, std::uint32_t> providerIndex_;
    bool ascending_ = true;  // record ids ascend
};

}  // namespace replay::events
