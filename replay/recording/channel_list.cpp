#include "replay/recording/channel_list.h"

#include "replay/text/xml_text.h"

#include <utility>

namespace replay::recording {

std::optional<text::XmlDamage> ReadChannelList(std::string_view document,
                                               const std::function<void(ChannelConfig)>& add) {
    text::XmlReader reader(document);
    const Property attribute = [&reader](std::string_view name) -> std::optional<std::string> {
        const auto raw = reader.Attribute(name);
        if (!raw) {
            return std::nullopt;
        }
        return text::DecodeXml(*raw);
    };
    for (;;) {
        const text::XmlToken token = reader.Next();
        if (token == text::XmlToken::kDone) {
            return std::nullopt;
        }
        if (token == text::XmlToken::kDamaged) {
            return reader.Damage();
        }
        if (token != text::XmlToken::kStart || reader.Name() != "channel") {
            continue;
        }
        auto config = ReadChannelConfig(attribute);
        if (!config) {
            return text::XmlDamage{reader.TokenBegin(),
                                   "a channel without a name or of an unknown type"};
        }
        add(std::move(*config));
    }
}

}  // namespace replay::recording
