#include "support/failing_allocations.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <new>
#include <span>
#include <string_view>
#include <vector>

#ifdef __ELF__
#include <execinfo.h>
#include <link.h>
#endif

namespace tavrin::test {
namespace {

std::atomic<bool> g_counting{false};
std::atomic<bool> g_lasting{false};
std::atomic<std::int64_t> g_left{0};  // allocations up to and including the failing one

#ifdef __ELF__
// ELF libraries share the program's operator new. A frame of theirs on the stack identifies an
// allocation of the replay service or of the Win32 stand-in.
class Libraries {
public:
    Libraries() {
        void* frame = nullptr;
        backtrace(&frame, 1);  // the first call allocates
        dl_iterate_phdr(AddLibrary, this);
    }

    bool AreOnTheStack() const {
        void* frames[64];
        const int count = backtrace(frames, static_cast<int>(std::size(frames)));
        return std::any_of(frames, frames + count, [this](const void* frame) {
            const auto address = reinterpret_cast<std::uintptr_t>(frame);
            return std::ranges::any_of(ranges_, [address](const Range& range) {
                return address >= range.begin && address < range.end;
            });
        });
    }

private:
    struct Range {
        std::uintptr_t begin;
        std::uintptr_t end;
    };

    static int AddLibrary(dl_phdr_info* info, std::size_t, void* self) {
        const std::string_view name = info->dlpi_name;
        if (!name.ends_with("/wevtapi.so") && !name.ends_with("/libtavrin_win32.so")) {
            return 0;
        }
        for (const auto& part : std::span(info->dlpi_phdr, info->dlpi_phnum)) {
            const std::uintptr_t begin = info->dlpi_addr + part.p_vaddr;
            static_cast<Libraries*>(self)->ranges_.push_back({begin, begin + part.p_memsz});
        }
        return 0;
    }

    std::vector<Range> ranges_;
};

bool IsServiceAllocation() {
    static const Libraries& libraries = *new Libraries;
    return libraries.AreOnTheStack();
}
#else
// The replay DLL has its own operator new.
bool IsServiceAllocation() {
    return false;
}
#endif

bool Fails() {
    if (!g_counting || IsServiceAllocation()) {
        return false;
    }
    const std::int64_t left = --g_left;
    return left == 0 || (left < 0 && g_lasting);
}

void* TryAllocate(std::size_t size) {
    return Fails() ? nullptr : std::malloc(size == 0 ? 1 : size);
}

void* Allocate(std::size_t size) {
    void* const block = TryAllocate(size);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    return block;
}

}  // namespace

FailingAllocations::FailingAllocations(int n, Shortage shortage) {
    static_cast<void>(IsServiceAllocation());
    g_left = n;
    g_lasting = shortage == Shortage::FromThenOn;
    g_counting = true;
}

FailingAllocations::~FailingAllocations() {
    g_counting = false;
}

bool FailingAllocations::HaveFailed() const {
    return g_left <= 0;
}

}  // namespace tavrin::test

void* operator new(std::size_t size) {
    return tavrin::test::Allocate(size);
}
void* operator new[](std::size_t size) {
    return tavrin::test::Allocate(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return tavrin::test::TryAllocate(size);
}
void operator delete(void* block) noexcept {
    std::free(block);
}
void operator delete[](void* block) noexcept {
    std::free(block);
}
void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}
void operator delete[](void* block, std::size_t) noexcept {
    std::free(block);
}
