#include "replay/api/variant_writer.h"

#include "replay/api/guid_and_sid.h"
#include "replay/text/utf8.h"
#include "replay/text/xml_text.h"

#include <cstring>
#include <string>

namespace replay::api {

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
