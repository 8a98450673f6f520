#pragma once

#include "replay/calls/object.h"
#include "replay/events/system_fields.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace replay::events {

// What a query most often asks of an event, at hand without reading the event's text.
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
    virtual EventFacts Facts(std::uint64_t ordinal) const = 0;
    virtual SystemFields System(std::uint64_t ordinal) const = 0;

    // The event's XML as the service renders it: without <RenderingInfo>.
    virtual std::string Xml(std::uint64_t ordinal) const = 0;

    // The event's XML with its <RenderingInfo>, if it has one.
    virtual std::string RenderedXml(std::uint64_t ordinal) const = 0;

    // Size of the event's XML, for the limit on what one call may return.
    virtual std::size_t XmlSize(std::uint64_t ordinal) const = 0;

    virtual std::optional<std::string> Rendering(std::uint64_t ordinal,
                                                 RenderingPart part) const = 0;

    // The code with which the event's message fails; 15029 although it is there.
    virtual std::optional<std::uint32_t> MessageFailure(std::uint64_t /*ordinal*/) const {
        return std::nullopt;
    }

    // Whether the event brought its rendered texts along, as forwarded events do: then they can be
    // had without the provider.
    virtual bool CarriesRendering(std::uint64_t ordinal) const = 0;

    // The ordinal of the event of this record id.
    virtual std::optional<std::uint64_t> Find(std::uint64_t recordId) const = 0;

    // Whether some event of the provider has a message.
    virtual bool HasMessageOf(std::string_view provider) const = 0;

    // The number of the event in its log, by which bookmarks and seeks count: its record id, but in
    // a log of forwarded events, where that is the number in the log of another computer.
    std::uint64_t NumberInLog(std::uint64_t ordinal) const {
        return firstNumber_ ? *firstNumber_ + ordinal : Facts(ordinal).recordId;
    }
    std::optional<std::uint64_t> FindNumber(std::uint64_t number) const;

    // The log counts the events itself, from this number on. Before the source is shared.
    void NumberFrom(std::uint64_t first) { firstNumber_ = first; }

private:
    std::optional<std::uint64_t> firstNumber_;
    const std::wstring channel_;
    const std::wstring foldedChannel_;
};

}  // namespace replay::events
