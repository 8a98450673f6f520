#include "window/controls/remote_memory.h"

#include <algorithm>
#include <stdexcept>

namespace tavrin::test {

RemoteMemory::RemoteMemory(HANDLE process, std::size_t bytes)
    : process_(process),
      base_(VirtualAllocEx(process, nullptr, bytes, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE)) {
    if (base_ == nullptr) {
        throw std::runtime_error("no memory in the other process");
    }
}

RemoteMemory::~RemoteMemory() {
    VirtualFreeEx(process_, base_, 0, MEM_RELEASE);
}

std::wstring RemoteMemory::ReadText(std::size_t offset, std::size_t room) const {
    std::wstring text(room, L'\0');
    ReadBytes(text.data(), room * sizeof(wchar_t), offset);
    text.erase(std::find(text.begin(), text.end(), L'\0'), text.end());
    return text;
}

void RemoteMemory::ReadBytes(void* to, std::size_t bytes, std::size_t offset) const {
    if (!ReadProcessMemory(process_, At<const void*>(offset), to, bytes, nullptr)) {
        throw std::runtime_error("cannot read the other process");
    }
}

void RemoteMemory::WriteBytes(const void* from, std::size_t bytes, std::size_t offset) {
    if (!WriteProcessMemory(process_, At<void*>(offset), from, bytes, nullptr)) {
        throw std::runtime_error("cannot write to the other process");
    }
}

}  // namespace tavrin::test
