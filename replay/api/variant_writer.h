#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include <windows.h>
#include <winevt.h>

namespace replay::api {

// Writes variants to the front of a caller's buffer and what they point to behind them. Without a
// buffer it only measures.
class VariantWriter {
public:
    // `variants` is how many values follow.
    VariantWriter(void* buffer, std::size_t variants);

    // The values are appended in the order of the calls.
    void Null();
    void Byte(std::optional<std::uint8_t> value);
    void UInt16(std::optional<std::uint16_t> value);
    void UInt32(std::optional<std::uint32_t> value);
    void UInt64(std::optional<std::uint64_t> value);
    void HexInt64(std::optional<std::uint64_t> value);
    void FileTime(std::optional<std::uint64_t> value);
    void Boolean(bool value);
    void String(std::wstring_view value);
    void Xml(std::optional<std::string_view> raw);   // text of XML, as a string
    void Guid(std::optional<std::string_view> raw);  // "{...}"; Null if it is none
    void Sid(std::optional<std::string_view> raw);   // "S-1-..."; Null if it is none

    // Bytes used so far, or needed.
    std::size_t Size() const { return used_; }

private:
    void Add(DWORD type, std::uint64_t bits);
    void* Reserve(std::size_t size, std::size_t alignment);
    void AddPointer(DWORD type, const void* place);

    std::byte* buffer_;
    std::size_t next_ = 0;
    std::size_t used_;
};

}  // namespace replay::api
