#include "support/import_patch.h"

#include <cstring>
#include <stdexcept>
#include <string>

namespace tavrin::test {
namespace {

template <typename Thing>
Thing* InModule(HMODULE program, DWORD offset) {
    return reinterpret_cast<Thing*>(reinterpret_cast<BYTE*>(program) + offset);
}

const IMAGE_IMPORT_DESCRIPTOR* FirstImportedLibrary(HMODULE program) {
    const auto* const dos = InModule<IMAGE_DOS_HEADER>(program, 0);
    const auto* const headers =
        InModule<IMAGE_NT_HEADERS>(program, static_cast<DWORD>(dos->e_lfanew));
    return InModule<IMAGE_IMPORT_DESCRIPTOR>(
        program,
        headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress);
}

// Returns null if the program imports no such function from the library.
void** FindInLibrary(HMODULE program, const IMAGE_IMPORT_DESCRIPTOR& library,
                     const char* functionName) {
    const auto* names = InModule<IMAGE_THUNK_DATA>(program, library.OriginalFirstThunk);
    auto* places = InModule<IMAGE_THUNK_DATA>(program, library.FirstThunk);
    for (; names->u1.AddressOfData != 0; ++names, ++places) {
        if (IMAGE_SNAP_BY_ORDINAL(names->u1.Ordinal)) {
            continue;
        }
        const auto* const entry =
            InModule<IMAGE_IMPORT_BY_NAME>(program, static_cast<DWORD>(names->u1.AddressOfData));
        if (std::strcmp(reinterpret_cast<const char*>(entry->Name), functionName) == 0) {
            return reinterpret_cast<void**>(&places->u1.Function);
        }
    }
    return nullptr;
}

}  // namespace

void** FindImport(const char* functionName, HMODULE program) {
    for (const auto* library = FirstImportedLibrary(program); library->Name != 0; ++library) {
        if (void** const place = FindInLibrary(program, *library, functionName)) {
            return place;
        }
    }
    throw std::runtime_error(std::string("not imported: ") + functionName);
}

void** FindImport(const char* functionName) {
    return FindImport(functionName, GetModuleHandleW(nullptr));
}

void* ReplaceImport(void** place, void* address) {
    DWORD protection = 0;
    if (!VirtualProtect(place, sizeof(*place), PAGE_READWRITE, &protection)) {
        throw std::runtime_error("cannot write to the import table");
    }
    void* const former = InterlockedExchangePointer(place, address);
    VirtualProtect(place, sizeof(*place), protection, &protection);
    return former;
}

}  // namespace tavrin::test
