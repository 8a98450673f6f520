#pragma once

#include "replay/calls/object.h"
#include "replay/events/system_fields.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace replay::events {

// The values that queries ask for most, available without parsing the event.
struct EventFacts {
    std::uint64_t recordId = 0;
    std::uint64_t time = 0;  // FILETIME
    std::string_view provider;
};

// The rendered texts that belong to an event.
enum class RenderingPart { kMessage, kLevel, kTask, kOpcode, kKeywords, kChannel, kProvider };

// A run of events, oldest first, that never changes. Ordinals count from 0. Safe on any thread.
class EventSource : public calls::Object {
public:
    // The channel that holds the events; forwarded ones name another one in their text.
    explicit EventSource(std::wstring_view channel);
    const std::wstring& Channel() const { return channel_; }
    bool IsAbout(std::wstring_view foldedChannel) const override {
        return foldedChannel == foldedChannel_;
    }

    virtual std::uint64_t Count() const = 0;
    virtual std::uint64_t Bytes() const = 0;  // size of the events' text
    // The event's values: those that queries ask for most, and all of <System>.
    virtual EventFacts Facts(std::uint64_t ordinal) const = 0;
    virtual SystemFields System(std::uint64_t ordinal) const = 0;

    // The event's XML as the service renders it: without <RenderingInfo>.
    virtual std::string Xml(std::uint64_t ordinal) const = 0;

    // The event's XML with its <RenderingInfo>, if it has one.
    virtual std::string RenderedXml(std::uint64_t ordinal) const = 0;

    // Size of the event's XML, for the limit on what one call may return.
    virtual std::size_t XmlSize(std::uint64_t ordinal) const = 0;

    // One of the event's rendered texts; nothing if there is none.
    virtual std::optional<std::string> Rendering(std::uint64_t ordinal,
                                                 RenderingPart part) const = 0;

    // The code that formatting the event's message fails with. With 15029 there is a text.
    virtual std::optional<std::uint32_t> MessageFailure(std::uint64_t /*ordinal*/) const {
        return std::nullopt;
    }

    // Whether the event carries its rendered texts, as forwarded events do. They need no provider.
    virtual bool CarriesRendering(std::uint64_t ordinal) const = 0;

    // The ordinal of the event with this record id.
    virtual std::optional<std::uint64_t> Find(std::uint64_t recordId) const = 0;

    // Whether some event of the provider has a message.
    virtual bool HasMessageOf(std::string_view provider) const = 0;

    // The event's number in its log; bookmarks and seeks count by it. It is the record id, except
    // in a log of forwarded events: their record ids are those of other computers.
    std::uint64_t NumberInLog(std::uint64_t ordinal) const {
        return firstNumber_ ? *firstNumber_ + ordinal : Facts(ordinal).recordId;
    }
    std::optional<std::uint64_t> FindNumber(std::uint64_t number) const;

    // Numbers the events from `first` on. Call it before the source is shared.
    void NumberFrom(std::uint64_t first) { firstNumber_ = first; }

private:
    std::optional<std::uint64_t> firstNumber_;
    const std::wstring channel_;
    const std::wstring foldedChannel_;
};

}  // namespace replay::events
