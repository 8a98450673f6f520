#include "endurance/process_resources.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include <winternl.h>

namespace tavrin::test {
namespace {

// An entry of the GDI handle table, which is mapped into every process with windows.
struct GdiEntry {
    std::uint64_t object;
    std::uint32_t owner;
    std::uint16_t unique;
    std::uint16_t type;  // in the lowest five bits; 0 for a free entry
    std::uint64_t userPointer;
};
constexpr std::size_t kGdiEntries = 65536;
constexpr std::uint16_t kGdiType = 0x1F;
constexpr std::size_t kGdiTableInProcessBlock = 0xF8;

// Not every import library has these functions of ntdll.
template <typename Function>
Function SystemFunction(const char* name) {
    return reinterpret_cast<Function>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), name)));
}

std::byte* ProcessBlock(HANDLE process) {
    const auto query =
        SystemFunction<decltype(&NtQueryInformationProcess)>("NtQueryInformationProcess");
    PROCESS_BASIC_INFORMATION information{};
    query(process, ProcessBasicInformation, &information, sizeof(information), nullptr);
    return reinterpret_cast<std::byte*>(information.PebBaseAddress);
}

unsigned CountGdiEntries(HANDLE process) {
    void* table = nullptr;
    std::vector<GdiEntry> entries(kGdiEntries);
    if (!ReadProcessMemory(process, ProcessBlock(process) + kGdiTableInProcessBlock, &table,
                           sizeof(table), nullptr) ||
        !ReadProcessMemory(process, table, entries.data(), entries.size() * sizeof(GdiEntry),
                           nullptr)) {
        return 0;
    }
    return static_cast<unsigned>(std::ranges::count_if(
        entries, [](const GdiEntry& entry) { return (entry.type & kGdiType) != 0; }));
}

// Wine reuses freed handles, the last freed first, before it numbers new ones in order. When many
// handles in a row are consecutive, no free one is left, and the last number gives the count of
// handles in use. Destroying the probes in reverse order restores the free list.
unsigned CountUserHandles() {
    constexpr unsigned kFirst = 0x20;
    constexpr unsigned kStep = 2;
    constexpr unsigned kRow = 256;
    std::vector<HMENU> probes;
    unsigned number = 0;
    for (unsigned inOrder = 0; inOrder < kRow;) {
        probes.push_back(CreateMenu());
        const unsigned next = LOWORD(reinterpret_cast<UINT_PTR>(probes.back()));
        inOrder = next == number + kStep ? inOrder + 1 : 0;
        number = next;
    }
    std::for_each(probes.rbegin(), probes.rend(), DestroyMenu);
    return (number - kFirst) / kStep + 1 - static_cast<unsigned>(probes.size());
}

// Counts the process's entries in the system's list of all handles.
unsigned CountKernelHandles(DWORD process) {
    struct Entry {
        void* object;
        ULONG_PTR process;
        ULONG_PTR handle;
        ULONG access;
        USHORT trace;
        USHORT type;
        ULONG attributes;
        ULONG reserved;
    };
    struct Header {
        ULONG_PTR count;
        ULONG_PTR reserved;
    };
    constexpr ULONG kExtendedHandles = 64;  // SystemExtendedHandleInformation, not in the headers
    using Query = NTSTATUS(NTAPI*)(ULONG, void*, ULONG, ULONG*);
    const auto query = SystemFunction<Query>("NtQuerySystemInformation");
    std::vector<std::byte> bytes(1 << 16);
    ULONG used = 0;
    while (query(kExtendedHandles, bytes.data(), static_cast<ULONG>(bytes.size()), &used) != 0) {
        bytes.resize(2 * bytes.size());
    }
    const auto count = reinterpret_cast<const Header*>(bytes.data())->count;
    const auto* const entries = reinterpret_cast<const Entry*>(bytes.data() + sizeof(Header));
    return static_cast<unsigned>(std::count_if(
        entries, entries + count, [&](const Entry& entry) { return entry.process == process; }));
}

}  // namespace

ProcessResources ResourcesOf(HANDLE process) {
    ProcessResources resources;
    resources.gdiObjects = GetGuiResources(process, GR_GDIOBJECTS);
    if (resources.gdiObjects == 0) {
        resources.gdiObjects = CountGdiEntries(process);
    }
    resources.userObjects = GetGuiResources(process, GR_USEROBJECTS);
    if (resources.userObjects == 0) {
        resources.userObjects = CountUserHandles();
    }
    resources.kernelHandles = CountKernelHandles(GetProcessId(process));
    return resources;
}

}  // namespace tavrin::test
