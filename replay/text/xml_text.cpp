#include "replay/text/xml_text.h"

#include "replay/text/numbers.h"
#include "replay/text/utf8.h"

#include <cstdint>

namespace replay::text {
namespace {

struct Entity {
    std::string_view name;
    char character;
};

constexpr Entity kEntities[] = {
    {"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"apos", '\''}, {"quot", '"'},
};

// Parses "#65" or "#x41". Returns nothing if it is not a character.
std::optional<std::uint32_t> CharacterReference(std::string_view name) {
    if (!name.starts_with('#')) {
        return std::nullopt;
    }
    const bool hexadecimal = name.starts_with("#x");
    const auto code =
        ParseNumber<std::uint32_t>(name.substr(hexadecimal ? 2 : 1), hexadecimal ? 16 : 10);
    if (!code || *code > 0x10FFFF) {
        return std::nullopt;
    }
    return code;
}

}  // namespace

std::optional<std::string> EntityText(std::string_view name) {
    for (const Entity& entity : kEntities) {
        if (entity.name == name) {
            return std::string(1, entity.character);
        }
    }
    const auto code = CharacterReference(name);
    if (!code) {
        return std::nullopt;
    }
    if (*code < 0x10000) {
        return ToUtf8(std::wstring(1, static_cast<wchar_t>(*code)));
    }
    const wchar_t pair[] = {static_cast<wchar_t>(0xD800U + ((*code - 0x10000U) >> 10)),
                            static_cast<wchar_t>(0xDC00U + ((*code - 0x10000U) & 0x3FFU))};
    return ToUtf8(std::wstring_view(pair, 2));
}

std::string DecodeXml(std::string_view raw) {
    std::string text;
    text.reserve(raw.size());
    for (std::size_t at = 0; at < raw.size();) {
        const std::size_t entity = raw.find('&', at);
        text += raw.substr(at, entity == std::string_view::npos ? entity : entity - at);
        if (entity == std::string_view::npos) {
            break;
        }
        const std::size_t semicolon = raw.find(';', entity);
        const auto meaning = semicolon == std::string_view::npos
                                 ? std::nullopt
                                 : EntityText(raw.substr(entity + 1, semicolon - entity - 1));
        text += meaning.value_or("&");
        at = meaning ? semicolon + 1 : entity + 1;
    }
    return text;
}

std::string EncodeXml(std::string_view text) {
    std::string encoded;
    encoded.reserve(text.size());
    for (const char character : text) {
        std::string_view name;
        for (const Entity& entity : kEntities) {
            if (entity.character == character) {
                name = entity.name;
            }
        }
        if (name.empty()) {
            encoded.push_back(character);
        } else {
            encoded.append("&").append(name).append(";");
        }
    }
    return encoded;
}

}  // namespace replay::text
