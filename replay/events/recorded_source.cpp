#include "replay/events/recorded_source.h"

#include "replay/events/rendering_info.h"
#include "replay/events/system_reader.h"
#include "replay/text/blanks.h"
#include "replay/text/utf8.h"
#include "replay/text/xml_text.h"

#include <algorithm>
#include <utility>

namespace replay::events {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kRootStart = "<Events>";
constexpr std::string_view kRootEnd = "</Events>";

// Skips what may be between events: blanks, the root's tags, a declaration. The root's end tag may
// be anywhere, because events may be appended after it.
std::size_t SkipBetweenEvents(std::string_view bytes, std::size_t at, bool& closed) {
    if (at == 0 && bytes.starts_with(kByteOrderMark)) {
        at = kByteOrderMark.size();
    }
    for (;;) {
        at = std::min(bytes.find_first_not_of(text::kBlanks, at), bytes.size());
        const std::string_view rest = bytes.substr(at);
        if (rest.starts_with(kRootStart)) {
            at += kRootStart.size();
        } else if (rest.starts_with(kRootEnd)) {
            at += kRootEnd.size();
            closed = true;
        } else if (rest.starts_with("<?") && rest.find("?>") != std::string_view::npos) {
            at += rest.find("?>") + 2;
        } else {
            return at;
        }
    }
}

// Returns the offset of the next event after a damaged one, or npos.
std::size_t NextEvent(std::string_view bytes, std::size_t at) {
    constexpr std::string_view kEventStart = "<Event";
    constexpr std::string_view kAfterName = " \t\r\n>";
    do {
        at = bytes.find(kEventStart, at);
        if (at == std::string_view::npos) {
            return at;
        }
        at += kEventStart.size();
    } while (at == bytes.size() || kAfterName.find(bytes[at]) == std::string_view::npos);
    return at - kEventStart.size();
}

}  // namespace

RecordedSource::RecordedSource(std::wstring_view channel,
                               std::shared_ptr<const platform::EventBytes> bytes, Extent& extent)
    : EventSource(channel), channelUtf8_(text::ToUtf8(channel)), bytes_(std::move(bytes)) {
    const std::string_view all = bytes_->View();
    for (;;) {
        const std::size_t begin = SkipBetweenEvents(all, extent.end, extent.closed);
        if (begin == all.size()) {
            extent.end = begin;
            break;
        }
        extent.closed = false;
        const std::size_t damagesBefore = extent.damages.size();
        if (ReadEvent(begin, extent)) {
            continue;
        }
        if (extent.damages.size() == damagesBefore) {
            break;  // only a comment or an incomplete event is left
        }
        const std::size_t next = NextEvent(all, std::max(begin, extent.damages.back().offset) + 1);
        if (next == std::string_view::npos) {
            break;
        }
        extent.end = next;
    }
    events_.shrink_to_fit();
}

// Reads one event into the index. If it is damaged or incomplete, stores why and returns false.
bool RecordedSource::ReadEvent(std::size_t begin, Extent& extent) {
    text::XmlReader reader(bytes_->View(), begin);
    const text::XmlToken token = reader.Next();
    if (token == text::XmlToken::kDone) {  // only a comment
        extent.end = reader.TokenEnd();
        return false;
    }
    IndexedEvent event{.begin = reader.TokenBegin()};
    if (token == text::XmlToken::kStart && reader.Name() != "Event") {
        extent.damages.push_back(
            {static_cast<std::size_t>(event.begin),
             std::string("<").append(reader.Name()).append("> where <Event> belongs")});
        return false;
    }
    EventParts parts;
    if (token == text::XmlToken::kDamaged || !ReadParts(reader, event, parts)) {
        extent.damages.push_back(reader.Damage());
        return false;
    }
    extent.end = reader.TokenEnd();
    event.length = static_cast<std::uint32_t>(extent.end - event.begin);
    AddToIndex(event, parts);
    return true;
}

// Reads the rest of an event after its start tag. Returns false if it is damaged.
bool RecordedSource::ReadParts(text::XmlReader& reader, IndexedEvent& event, EventParts& parts) {
    while (reader.Depth() > 0) {
        const text::XmlToken token = reader.Next();
        if (token == text::XmlToken::kDamaged) {
            return false;
        }
        if (token != text::XmlToken::kStart) {
            continue;
        }
        if (reader.Name() == "System") {
            event.system = static_cast<std::uint32_t>(reader.TokenBegin() - event.begin);
            parts.system = ReadSystem(reader);
        } else if (reader.Name() == "RenderingInfo") {
            ReadRendering(reader, event, parts);
        } else {
            reader.SkipElement();
        }
    }
    return true;
}

// A recording adds only the message to an event. Any other rendered text was forwarded with it.
void RecordedSource::ReadRendering(text::XmlReader& reader, IndexedEvent& event,
                                   EventParts& parts) {
    event.renderingBegin = static_cast<std::uint32_t>(reader.TokenBegin() - event.begin);
    const std::size_t inside = reader.Depth();
    while (reader.Depth() >= inside) {
        const text::XmlToken token = reader.Next();
        if (token == text::XmlToken::kDamaged) {
            return;
        }
        if (token != text::XmlToken::kStart) {
            continue;
        }
        if (reader.Name() == "Message") {
            parts.hasMessage = true;
        } else {
            event.carriesRendering = true;
        }
    }
    event.renderingEnd = static_cast<std::uint32_t>(reader.TokenEnd() - event.begin);
}

void RecordedSource::AddToIndex(IndexedEvent event, const EventParts& parts) {
    const SystemFields& system = parts.system;
    event.recordId = system.recordId.value_or(0);
    event.time = system.timeCreated.value_or(0);
    event.provider = ProviderIndex(system.providerName.value_or(std::string_view()));
    if (system.channel && event.renderingEnd != 0 &&
        text::DecodeXml(*system.channel) != channelUtf8_) {
        event.carriesRendering = true;
    }
    if (parts.hasMessage) {
        providers_[event.provider].hasMessage = true;
    }
    if (!events_.empty() && event.recordId <= events_.back().recordId) {
        ascending_ = false;
    }
    events_.push_back(event);
}

std::uint32_t RecordedSource::ProviderIndex(std::string_view rawName) {
    std::string name = text::DecodeXml(rawName);
    const auto [entry, added] =
        providerIndex_.try_emplace(name, static_cast<std::uint32_t>(providers_.size()));
    if (added) {
        providers_.push_back({std::move(name)});
    }
    return entry->second;
}

std::string_view RecordedSource::Event(const IndexedEvent& event) const {
    return bytes_->View().substr(event.begin, event.length);
}

std::string_view RecordedSource::RenderingInfo(const IndexedEvent& event) const {
    return Event(event).substr(event.renderingBegin, event.renderingEnd - event.renderingBegin);
}

EventFacts RecordedSource::Facts(std::uint64_t ordinal) const {
    const IndexedEvent& event = events_[ordinal];
    return {event.recordId, event.time, providers_[event.provider].name};
}

SystemFields RecordedSource::System(std::uint64_t ordinal) const {
    const IndexedEvent& event = events_[ordinal];
    if (event.system == 0) {
        return {};
    }
    text::XmlReader reader(Event(event), event.system);
    reader.Next();
    return ReadSystem(reader);
}

std::string RecordedSource::Xml(std::uint64_t ordinal) const {
    const IndexedEvent& event = events_[ordinal];
    std::string xml(Event(event));
    if (event.renderingEnd != 0) {
        xml.erase(event.renderingBegin, event.renderingEnd - event.renderingBegin);
    }
    return xml;
}

std::string RecordedSource::RenderedXml(std::uint64_t ordinal) const {
    return std::string(Event(events_[ordinal]));
}

std::size_t RecordedSource::XmlSize(std::uint64_t ordinal) const {
    const IndexedEvent& event = events_[ordinal];
    return event.length - (event.renderingEnd - event.renderingBegin);
}

std::optional<std::string> RecordedSource::Rendering(std::uint64_t ordinal,
                                                     RenderingPart part) const {
    const IndexedEvent& event = events_[ordinal];
    if (event.renderingEnd == 0) {
        return std::nullopt;
    }
    return ReadRenderingPart(RenderingInfo(event), part);
}

std::optional<std::uint32_t> RecordedSource::MessageFailure(std::uint64_t ordinal) const {
    const IndexedEvent& event = events_[ordinal];
    return event.renderingEnd == 0 ? std::nullopt : ReadMessageFailure(RenderingInfo(event));
}

bool RecordedSource::CarriesRendering(std::uint64_t ordinal) const {
    return events_[ordinal].carriesRendering;
}

std::optional<std::uint64_t> RecordedSource::Find(std::uint64_t recordId) const {
    auto found = events_.end();
    if (ascending_) {
        found = std::ranges::lower_bound(events_, recordId, {}, &IndexedEvent::recordId);
        if (found != events_.end() && found->recordId != recordId) {
            found = events_.end();
        }
    } else {
        found = std::ranges::find(events_, recordId, &IndexedEvent::recordId);
    }
    if (found == events_.end()) {
        return std::nullopt;
    }
    return static_cast<std::uint64_t>(found - events_.begin());
}

bool RecordedSource::HasMessageOf(std::string_view provider) const {
    const auto entry = providerIndex_.find(std::string(provider));
    return entry != providerIndex_.end() && providers_[entry->second].hasMessage;
}

}  // namespace replay::events
