#pragma once

#include <cstddef>
#include <string>
#include <type_traits>

#include <windows.h>

namespace tavrin::test {

// Memory in another process, for messages whose structures Windows does not marshal.
class RemoteMemory {
public:
    // The process handle must outlive the memory.
    RemoteMemory(HANDLE process, std::size_t bytes);
    ~RemoteMemory();
    RemoteMemory(const RemoteMemory&) = delete;
    RemoteMemory& operator=(const RemoteMemory&) = delete;

    template <typename Value>
    void Write(const Value& value, std::size_t offset = 0) {
        static_assert(std::is_trivially_copyable_v<Value>);
        WriteBytes(&value, sizeof(value), offset);
    }

    template <typename Value>
    Value Read(std::size_t offset = 0) const {
        static_assert(std::is_trivially_copyable_v<Value>);
        Value value{};
        ReadBytes(&value, sizeof(value), offset);
        return value;
    }

    // Reads a null-terminated text of at most `room` characters, including the terminator.
    std::wstring ReadText(std::size_t offset, std::size_t room) const;

    void ReadBytes(void* to, std::size_t bytes, std::size_t offset) const;
    void WriteBytes(const void* from, std::size_t bytes, std::size_t offset);

    // An address in the other process.
    template <typename Pointer>
    Pointer At(std::size_t offset) const {
        return reinterpret_cast<Pointer>(static_cast<std::byte*>(base_) + offset);
    }

private:
    HANDLE process_;
    void* base_;
};

}  // namespace tavrin::test
