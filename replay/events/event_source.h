#pragma once

#include "replay/calls/object.h"
#include "replay/events/system_fields.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace replay::events {

// The most queried values of an event, available without parsing it.
struct EventFacts {
    std::uint64_t recordId = 0;
    std::uint64_t time = 0;  // FILETIME
    std::string_view provider;
};

// The rendered texts of an event.
enum class RenderingPart { kMessage, kLevel, kTask, kOpcode, kKeywords, kChannel, kProvider };

// An immutable sequence of events, oldest first. Ordinals count from 0. Thread-safe.
class EventSource : public calls::Object {
public:
    // The channel that holds the events. The XML of forwarded events names another channel.
    explicit EventSource(std::wstring_view channel);
    const std::wstring& Channel() const { return channel_; }
    bool IsAbout(std::wstring_view foldedChannel) const override {
        return foldedChannel == foldedChannel_;
    }

    virtual std::uint64_t Count() const = 0;
    virtual std::uint64_t Bytes() const = 0;  // size of the events' XML
    // The event's most queried values, and all values of <System>.
    virtual EventFacts Facts(std::uint64_t ordinal) const = 0;
    virtual SystemFields System(std::uint64_t ordinal) const = 0;

    // The event's XML as EvtRender returns it, without <RenderingInfo>.
    virtual std::string Xml(std::uint64_t ordinal) const = 0;

    // The event's XML with its <RenderingInfo>, if it has one.
    virtual std::string RenderedXml(std::uint64_t ordinal) const = 0;

    // Size of the event's XML in UTF-8 bytes, for the limit of one EvtNext.
    virtual std::size_t XmlSize(std::uint64_t ordinal) const = 0;

    // One of the event's rendered texts, if present.
    virtual std::optional<std::string> Rendering(std::uint64_t ordinal,
                                                 RenderingPart part) const = 0;

    // The code with which formatting the event's message fails. With 15029 the text is still
    // present.
    virtual std::optional<std::uint32_t> MessageFailure(std::uint64_t /*ordinal*/) const {
        return std::nullopt;
    }

    // Whether the event carries its rendered texts, as forwarded events do. Then no provider is
    // needed.
    virtual bool CarriesRendering(std::uint64_t ordinal) const = 0;

    // The ordinal of the event with this record id, if present.
    virtual std::optional<std::uint64_t> Find(std::uint64_t recordId) const = 0;

    // Whether any event of this provider has a message.
    virtual bool HasMessageOf(std::string_view provider) const = 0;

    // The event's number in its log, which bookmarks and seeks use. Equal to the record id, except
    // in a log of forwarded events, which keep the record ids of their source computers.
    std::uint64_t NumberInLog(std::uint64_t ordinal) const {
        return firstNumber_ ? *firstNumber_ + ordinal : Facts(ordinal).recordId;
    }
    std::optional<std::uint64_t> FindNumber(std::uint64_t number) const;

    // Numbers the events from `first`. Call before the source is shared between threads.
    void NumberFrom(std::uint64_t first) { firstNumber_ = first; }

private:
    std::optional<std::uint64_t> firstNumber_;
    const std::wstring channel_;
    const std::wstring foldedChannel_;
};

}  // namespace replay::events
