#include "support/import_patch.h"

#include <atomic>
#include <cstdint>
#include <cstring>
#include <span>
#include <stdexcept>
#include <string>

#include <elf.h>
#include <link.h>

// ImportPatch for ELF: a program calls imported functions through its global offset table, and the
// relocations name each entry. The linker flags -z now and -z norelro make the loader bind all
// entries at start and leave them writable.

namespace tavrin::test {
namespace {

// The program's relocations according to its dynamic section.
struct Relocations {
    std::uintptr_t base = 0;
    const Elf64_Sym* symbols = nullptr;
    const char* names = nullptr;
    std::span<const Elf64_Rela> calls;      // of called functions
    std::span<const Elf64_Rela> addresses;  // include functions whose address is taken
};

Relocations ReadDynamicSection(std::uintptr_t base, const Elf64_Dyn* dynamic) {
    Relocations relocations;
    relocations.base = base;
    const Elf64_Rela* calls = nullptr;
    const Elf64_Rela* addresses = nullptr;
    std::size_t callsSize = 0;
    std::size_t addressesSize = 0;
    for (; dynamic->d_tag != DT_NULL; ++dynamic) {
        // The loader has relocated the offsets: they are addresses.
        const auto value = dynamic->d_un.d_ptr;
        switch (dynamic->d_tag) {
            case DT_SYMTAB: relocations.symbols = reinterpret_cast<const Elf64_Sym*>(value); break;
            case DT_STRTAB: relocations.names = reinterpret_cast<const char*>(value); break;
            case DT_JMPREL: calls = reinterpret_cast<const Elf64_Rela*>(value); break;
            case DT_PLTRELSZ: callsSize = value; break;
            case DT_RELA: addresses = reinterpret_cast<const Elf64_Rela*>(value); break;
            case DT_RELASZ: addressesSize = value; break;
            default: break;
        }
    }
    relocations.calls = {calls, callsSize / sizeof(Elf64_Rela)};
    relocations.addresses = {addresses, addressesSize / sizeof(Elf64_Rela)};
    return relocations;
}

Relocations RelocationsOfProgram() {
    Relocations relocations;
    // The first entry is the program itself.
    dl_iterate_phdr(
        [](dl_phdr_info* info, std::size_t, void* result) {
            for (const Elf64_Phdr& header : std::span(info->dlpi_phdr, info->dlpi_phnum))
                if (header.p_type == PT_DYNAMIC)
                    *static_cast<Relocations*>(result) = ReadDynamicSection(
                        info->dlpi_addr,
                        reinterpret_cast<const Elf64_Dyn*>(info->dlpi_addr + header.p_vaddr));
            return 1;
        },
        &relocations);
    return relocations;
}

void** FindPlace(const Relocations& all, std::span<const Elf64_Rela> some, const char* name) {
    for (const Elf64_Rela& relocation : some) {
        const Elf64_Sym& symbol = all.symbols[ELF64_R_SYM(relocation.r_info)];
        if (std::strcmp(all.names + symbol.st_name, name) == 0)
            return reinterpret_cast<void**>(all.base + relocation.r_offset);
    }
    return nullptr;
}

}  // namespace

void** FindImport(const char* functionName) {
    const Relocations relocations = RelocationsOfProgram();
    for (const auto some : {relocations.calls, relocations.addresses}) {
        if (void** const place = FindPlace(relocations, some, functionName)) {
            return place;
        }
    }
    throw std::runtime_error(std::string("not imported: ") + functionName);
}

void* ReplaceImport(void** place, void* address) {
    return std::atomic_ref(*place).exchange(address);
}

}  // namespace tavrin::test
