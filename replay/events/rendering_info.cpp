#include "replay/events/rendering_info.h"

#include "replay/text/xml_reader.h"

namespace replay::events {
namespace {

// In the order of RenderingPart.
constexpr std::string_view kElements[] = {"Message", "Level",   "Task",    "Opcode",
                                          "Keyword", "Channel", "Provider"};

}  // namespace

std::optional<std::string> ReadRenderingPart(std::string_view renderingInfo, RenderingPart part) {
    const std::string_view wanted = kElements[static_cast<std::size_t>(part)];
    std::optional<std::string> found;
    text::XmlReader reader(renderingInfo);
    for (;;) {
        const text::XmlToken token = reader.Next();
        if (token == text::XmlToken::kDone || token == text::XmlToken::kDamaged) {
            return found;
        }
        if (token != text::XmlToken::kStart || reader.Name() != wanted) {
            continue;
        }
        const auto text = reader.ReadText();
        if (!text) {
            return found;
        }
        found = found ? *found + '\0' + *text : *text;
        if (part != RenderingPart::kKeywords) {
            return found;
        }
    }
}

}  // namespace replay::events
