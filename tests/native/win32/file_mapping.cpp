#include <map>

#include <sys/mman.h>
#include <unistd.h>

#include "file.h"

namespace {

using native::File;

// A file mapping object, backed by a file or by memory.
class Mapping final : public native::KernelObject {
public:
    explicit Mapping(std::shared_ptr<File> file) : file_(std::move(file)) {}
    const File& Mapped() const { return *file_; }

private:
    const std::shared_ptr<File> file_;
};

native::NamedObjects<Mapping>& Mappings() {
    static auto& mappings = *new native::NamedObjects<Mapping>;
    return mappings;
}

// The sizes of the mapped views in bytes, by address.
class Views {
public:
    static Views& Get() {
        static auto& views = *new Views;
        return views;
    }
    void Add(LPCVOID view, SIZE_T size) {
        const std::lock_guard guard(mutex_);
        sizes_[view] = size;
    }
    SIZE_T Remove(LPCVOID view) {
        const std::lock_guard guard(mutex_);
        const auto entry = sizes_.extract(view);
        return entry.empty() ? 0 : entry.mapped();
    }

private:
    std::mutex mutex_;
    std::map<LPCVOID, SIZE_T> sizes_;  // guarded by mutex_
};

std::shared_ptr<File> MakeMemory(std::uint64_t size) {
    const int descriptor = memfd_create("mapping", MFD_CLOEXEC);
    if (ftruncate(descriptor, static_cast<off_t>(size)) != 0)
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return std::make_shared<File>(descriptor);
}

}  // namespace

HANDLE CreateFileMappingW(HANDLE file, LPSECURITY_ATTRIBUTES, DWORD, DWORD sizeHigh, DWORD sizeLow,
                          LPCWSTR name) {
    return native::OpenHandle(Mappings().FindOrMake(name, [&] {
        return std::make_shared<Mapping>(file == INVALID_HANDLE_VALUE
                                             ? MakeMemory(std::uint64_t{sizeHigh} << 32 | sizeLow)
                                             : native::ObjectAs<File>(file));
    }));
}

HANDLE OpenFileMappingW(DWORD, BOOL, LPCWSTR name) {
    auto mapping = Mappings().Find(name);
    return mapping == nullptr ? nullptr : native::OpenHandle(std::move(mapping));
}

LPVOID MapViewOfFile(HANDLE mapping, DWORD access, DWORD, DWORD, SIZE_T size) {
    const int protection = (access & FILE_MAP_WRITE) != 0 ? PROT_READ | PROT_WRITE : PROT_READ;
    void* const view = mmap(nullptr, size, protection, MAP_SHARED,
                            native::ObjectAs<Mapping>(mapping)->Mapped().Descriptor(), 0);
    if (view == MAP_FAILED)
        return nullptr;
    Views::Get().Add(view, size);
    return view;
}

BOOL UnmapViewOfFile(LPCVOID view) {
    const SIZE_T size = Views::Get().Remove(view);
    return size != 0 && munmap(const_cast<void*>(view), size) == 0;
}
