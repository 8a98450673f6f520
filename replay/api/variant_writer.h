#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include <windows.h>
#include <winevt.h>

namespace replay::api {

// Writes variants to the start of a caller's buffer and the data that they point to after them.
// Without a buffer, only measures the size.
class VariantWriter {
public:
    // `variants` is the number of values to be appended.
    VariantWriter(void* buffer, std::size_t variants);

    // Each call appends a value. Without a value it appends Null.
    void Null();
    void Byte(std::optional<std::uint8_t> value);
    void UInt16(std::optional<std::uint16_t> value);
    void UInt32(std::optional<std::uint32_t> value);
    void UInt64(std::optional<std::uint64_t> value);
    void HexInt64(std::optional<std::uint64_t> value);
    void FileTime(std::optional<std::uint64_t> value);
    void Boolean(bool value);
    void String(std::wstring_view value);
    void Xml(std::optional<std::string_view> raw);   // XML text, decoded to a string
    void Guid(std::optional<std::string_view> raw);  // "{...}"; Null if malformed
    void Sid(std::optional<std::string_view> raw);   // "S-1-..."; Null if malformed

    // Size of the values so far in bytes.
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
