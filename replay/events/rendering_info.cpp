#include "replay/events/rendering_info.h"

#include "replay/text/numbers.h"
#include "replay/text/xml_reader.h"

namespace replay::events {
namespace {

// In the order of RenderingPart.
constexpr std::string_view kElements[] = {"Message", "Level",   "Task",    "Opcode",
                                          "Keyword", "Channel", "Provider"};

// Reads up to the start tag of the next element of this name. Returns false if there is none.
bool GoTo(text::XmlReader& reader, std::string_view name) {
    for (;;) {
        const text::XmlToken token = reader.Next();
        if (token == text::XmlToken::kDone || token == text::XmlToken::kDamaged) {
            return false;
        }
        if (token == text::XmlToken::kStart && reader.Name() == name) {
            return true;
        }
    }
}

}  // namespace

std::optional<std::string> ReadRenderingPart(std::string_view renderingInfo, RenderingPart part) {
    const std::string_view wanted = kElements[static_cast<std::size_t>(part)];
    std::optional<std::string> found;
    text::XmlReader reader(renderingInfo);
    while (GoTo(reader, wanted)) {
        const auto text = reader.ReadText();
        if (!text) {
            return found;
        }
        found = found ? *found + '\0' + *text : *text;
        if (part != RenderingPart::kKeywords) {
            return found;
        }
    }
    return found;
}

std::optional<std::uint32_t> ReadMessageFailure(std::string_view renderingInfo) {
    text::XmlReader reader(renderingInfo);
    const auto code = GoTo(reader, kElements[static_cast<std::size_t>(RenderingPart::kMessage)])
                          ? reader.Attribute("Failure")
                          : std::nullopt;
    return code ? text::ParseNumber<std::uint32_t>(*code) : std::nullopt;
}

}  // namespace replay::events
