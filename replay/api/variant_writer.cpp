#include "replay/api/variant_writer.h"

#include "replay/text/numbers.h"
#include "replay/text/utf8.h"
#include "replay/text/xml_text.h"

#include <array>
#include <cstring>
#include <string>

namespace replay::api {
namespace {

constexpr std::size_t kMostSubAuthorities = 15;

// "{555908d1-a6d7-4695-8e1e-26931d2012f4}", with or without braces.
std::optional<GUID> ParseGuid(std::string_view text) {
    if (text.starts_with('{') && text.ends_with('}')) {
        text = text.substr(1, text.size() - 2);
    }
    constexpr std::size_t kLength = 36;
    if (text.size() != kLength || text[8] != '-' || text[13] != '-' || text[18] != '-' ||
        text[23] != '-') {
        return std::nullopt;
    }
    const auto data1 = text::ParseNumber<std::uint32_t>(text.substr(0, 8), 16);
    const auto data2 = text::ParseNumber<std::uint16_t>(text.substr(9, 4), 16);
    const auto data3 = text::ParseNumber<std::uint16_t>(text.substr(14, 4), 16);
    if (!data1 || !data2 || !data3) {
        return std::nullopt;
    }
    GUID guid{*data1, *data2, *data3, {}};
    const std::string rest = std::string(text.substr(19, 4)) + std::string(text.substr(24));
    for (std::size_t i = 0; i < 8; ++i) {
        const auto byte =
            text::ParseNumber<std::uint8_t>(std::string_view(rest).substr(2 * i, 2), 16);
        if (!byte) {
            return std::nullopt;
        }
        guid.Data4[i] = *byte;
    }
    return guid;
}

// A SID in its binary form.
struct BinarySid {
    std::array<std::uint8_t, 8 + 4 * kMostSubAuthorities> bytes{};
    std::size_t size = 0;
};

// "S-1-5-18"
std::optional<BinarySid> ParseSid(std::string_view text) {
    if (!text.starts_with("S-1-")) {
        return std::nullopt;
    }
    text.remove_prefix(4);
    BinarySid sid;
    sid.bytes[0] = 1;
    std::size_t parts = 0;
    while (!text.empty()) {
        const std::size_t dash = text.find('-');
        const auto number = text::ParseNumber<std::uint32_t>(text.substr(0, dash));
        if (!number || parts > kMostSubAuthorities) {
            return std::nullopt;
        }
        if (parts == 0) {  // the authority: six bytes, high byte first
            for (std::size_t i = 0; i < 4; ++i) {
                sid.bytes[7 - i] = static_cast<std::uint8_t>(*number >> (8 * i));
            }
        } else {  // low byte first
            for (std::size_t i = 0; i < 4; ++i) {
                sid.bytes[8 + 4 * (parts - 1) + i] = static_cast<std::uint8_t>(*number >> (8 * i));
            }
        }
        ++parts;
        text.remove_prefix(dash == std::string_view::npos ? text.size() : dash + 1);
    }
    if (parts < 2) {
        return std::nullopt;
    }
    sid.bytes[1] = static_cast<std::uint8_t>(parts - 1);
    sid.size = 8 + 4 * (parts - 1);
    return sid;
}

}  // namespace

VariantWriter::VariantWriter(void* buffer, std::size_t variants)
    : buffer_(static_cast<std::byte*>(buffer)), used_(variants * sizeof(EVT_VARIANT)) {}

void VariantWriter::Null() {
    Add(EvtVarTypeNull, 0);
}

void VariantWriter::Byte(std::optional<std::uint8_t> value) {
    value ? Add(EvtVarTypeByte, *value) : Null();
}

void VariantWriter::UInt16(std::optional<std::uint16_t> value) {
    value ? Add(EvtVarTypeUInt16, *value) : Null();
}

void VariantWriter::UInt32(std::optional<std::uint32_t> value) {
    value ? Add(EvtVarTypeUInt32, *value) : Null();
}

void VariantWriter::UInt64(std::optional<std::uint64_t> value) {
    value ? Add(EvtVarTypeUInt64, *value) : Null();
}

void VariantWriter::HexInt64(std::optional<std::uint64_t> value) {
    value ? Add(EvtVarTypeHexInt64, *value) : Null();
}

void VariantWriter::FileTime(std::optional<std::uint64_t> value) {
    value ? Add(EvtVarTypeFileTime, *value) : Null();
}

void VariantWriter::Boolean(bool value) {
    Add(EvtVarTypeBoolean, value ? 1 : 0);
}

void VariantWriter::String(std::wstring_view value) {
    void* place = Reserve((value.size() + 1) * sizeof(wchar_t), alignof(wchar_t));
    if (place != nullptr) {
        auto* text = static_cast<wchar_t*>(place);
        text[value.copy(text, value.size())] = L'\0';
    }
    AddPointer(EvtVarTypeString, place);
}

void VariantWriter::Xml(std::optional<std::string_view> raw) {
    if (!raw) {
        return Null();
    }
    if (raw->find('&') != std::string_view::npos) {
        return String(text::ToWide(text::DecodeXml(*raw)));
    }
    void* place = Reserve((text::WideLength(*raw) + 1) * sizeof(wchar_t), alignof(wchar_t));
    if (place != nullptr) {
        *text::CopyWide(*raw, static_cast<wchar_t*>(place)) = L'\0';
    }
    AddPointer(EvtVarTypeString, place);
}

void VariantWriter::Guid(std::optional<std::string_view> raw) {
    const auto guid = raw ? ParseGuid(*raw) : std::nullopt;
    if (!guid) {
        return Null();
    }
    void* place = Reserve(sizeof(GUID), alignof(std::uint64_t));
    if (place != nullptr) {
        std::memcpy(place, &*guid, sizeof(GUID));
    }
    AddPointer(EvtVarTypeGuid, place);
}

void VariantWriter::Sid(std::optional<std::string_view> raw) {
    const auto sid = raw ? ParseSid(*raw) : std::nullopt;
    if (!sid) {
        return Null();
    }
    void* place = Reserve(sid->size, alignof(std::uint64_t));
    if (place != nullptr) {
        std::memcpy(place, sid->bytes.data(), sid->size);
    }
    AddPointer(EvtVarTypeSid, place);
}

void VariantWriter::Add(DWORD type, std::uint64_t bits) {
    if (buffer_ != nullptr) {
        EVT_VARIANT variant{};
        variant.UInt64Val = bits;
        variant.Type = type;
        std::memcpy(buffer_ + next_ * sizeof variant, &variant, sizeof variant);
    }
    ++next_;
}

void* VariantWriter::Reserve(std::size_t size, std::size_t alignment) {
    used_ = (used_ + alignment - 1) / alignment * alignment;
    void* place = buffer_ == nullptr ? nullptr : buffer_ + used_;
    used_ += size;
    return place;
}

void VariantWriter::AddPointer(DWORD type, const void* place) {
    Add(type, reinterpret_cast<std::uintptr_t>(place));
}

}  // namespace replay::api
