#include "replay/api/guid_and_sid.h"

#include "replay/text/numbers.h"

#include <string>
#include <vector>

namespace replay::api {
namespace {

constexpr std::string_view kSidStart = "S-1-";
constexpr std::size_t kSidHeader = 8;  // revision, number of sub-authorities, authority

template <typename Number>
std::optional<Number> ParseHex(std::string_view digits) {
    return text::ParseNumber<Number>(digits, 16);
}

// Parses decimal numbers separated by dashes. Returns an empty list if one is malformed.
std::vector<std::uint32_t> ParseDashedNumbers(std::string_view list) {
    std::vector<std::uint32_t> numbers;
    while (!list.empty()) {
        const std::size_t dash = list.find('-');
        const auto number = text::ParseNumber<std::uint32_t>(list.substr(0, dash));
        if (!number) {
            return {};
        }
        numbers.push_back(*number);
        list.remove_prefix(dash == std::string_view::npos ? list.size() : dash + 1);
    }
    return numbers;
}

std::uint8_t ByteOf(std::uint32_t number, std::size_t index) {
    return static_cast<std::uint8_t>(number >> (8 * index));
}

}  // namespace

std::optional<GUID> ParseGuid(std::string_view text) {
    if (text.starts_with('{') && text.ends_with('}')) {
        text = text.substr(1, text.size() - 2);
    }
    constexpr std::size_t kLength = 36;
    if (text.size() != kLength || text[8] != '-' || text[13] != '-' || text[18] != '-' ||
        text[23] != '-') {
        return std::nullopt;
    }
    const auto data1 = ParseHex<std::uint32_t>(text.substr(0, 8));
    const auto data2 = ParseHex<std::uint16_t>(text.substr(9, 4));
    const auto data3 = ParseHex<std::uint16_t>(text.substr(14, 4));
    const std::string rest = std::string(text.substr(19, 4)).append(text.substr(24));
    const auto data4 = ParseHex<std::uint64_t>(rest);
    if (!data1 || !data2 || !data3 || !data4) {
        return std::nullopt;
    }
    GUID guid{*data1, *data2, *data3, {}};
    for (std::size_t i = 0; i < sizeof guid.Data4; ++i) {  // high byte first
        guid.Data4[i] = static_cast<std::uint8_t>(*data4 >> (8 * (sizeof guid.Data4 - 1 - i)));
    }
    return guid;
}

std::optional<BinarySid> ParseSid(std::string_view text) {
    if (!text.starts_with(kSidStart)) {
        return std::nullopt;
    }
    const std::vector<std::uint32_t> parts = ParseDashedNumbers(text.substr(kSidStart.size()));
    if (parts.size() < 2 || parts.size() > 1 + kMostSubAuthorities) {
        return std::nullopt;
    }
    BinarySid sid;
    sid.bytes[0] = 1;
    sid.bytes[1] = static_cast<std::uint8_t>(parts.size() - 1);
    sid.size = kSidHeader + sizeof(std::uint32_t) * (parts.size() - 1);
    for (std::size_t i = 0; i < sizeof(std::uint32_t); ++i) {
        sid.bytes[kSidHeader - 1 - i] = ByteOf(parts[0], i);  // the authority: high byte first
        for (std::size_t part = 1; part < parts.size(); ++part) {
            sid.bytes[kSidHeader + sizeof(std::uint32_t) * (part - 1) + i] = ByteOf(parts[part], i);
        }
    }
    return sid;
}

}  // namespace replay::api
