#include "replay/platform/shared_file.h"

namespace replay::platform {
namespace {

class MappedBytes final : public EventBytes {
public:
    MappedBytes(const void* view, std::size_t size) : view_(view), size_(size) {}
    MappedBytes(const MappedBytes&) = delete;
    MappedBytes& operator=(const MappedBytes&) = delete;
    ~MappedBytes() override { UnmapViewOfFile(view_); }
    std::string_view View() const override { return {static_cast<const char*>(view_), size_}; }

private:
    const void* view_;
    std::size_t size_;
};

}  // namespace

std::uint64_t SharedFile::Size() const {
    LARGE_INTEGER size{};
    if (!GetFileSizeEx(file_.get(), &size)) {
        return 0;
    }
    return static_cast<std::uint64_t>(size.QuadPart);
}

std::string SharedFile::ReadFrom(std::uint64_t offset) const {
    const std::uint64_t size = Size();
    if (size <= offset) {
        return {};
    }
    std::string bytes(size - offset, '\0');
    OVERLAPPED at{};
    at.Offset = static_cast<DWORD>(offset);
    at.OffsetHigh = static_cast<DWORD>(offset >> 32);
    DWORD read = 0;
    if (!ReadFile(file_.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, &at)) {
        read = 0;
    }
    bytes.resize(read);
    return bytes;
}

std::shared_ptr<const EventBytes> SharedFile::Map() const {
    const std::uint64_t size = Size();
    if (size == 0) {
        return std::make_shared<OwnedBytes>(std::string());
    }
    const UniqueKernelHandle mapping(CreateFileMappingW(file_.get(), nullptr, PAGE_READONLY,
                                                        static_cast<DWORD>(size >> 32),
                                                        static_cast<DWORD>(size), nullptr));
    if (!mapping) {
        return nullptr;
    }
    const void* view = MapViewOfFile(mapping.get(), FILE_MAP_READ, 0, 0, static_cast<SIZE_T>(size));
    if (view == nullptr) {
        return nullptr;
    }
    return std::make_shared<MappedBytes>(view, static_cast<std::size_t>(size));
}

std::optional<std::string> ReadWholeFile(const std::wstring& path) {
    const SharedFile file(path);
    if (!file) {
        return std::nullopt;
    }
    return file.ReadFrom(0);
}

}  // namespace replay::platform
