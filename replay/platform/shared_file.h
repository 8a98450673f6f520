#pragma once

#include "replay/platform/event_bytes.h"
#include "replay/platform/file.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace replay::platform {

// A file open for reading while others may write to it.
class SharedFile {
public:
    explicit SharedFile(const std::wstring& path) : file_(OpenSharedFile(path)) {}

    // False if the file could not be opened.
    explicit operator bool() const { return static_cast<bool>(file_); }
    std::uint64_t Size() const;

    // The bytes from the offset to the present end of the file.
    std::string ReadFrom(std::uint64_t offset) const;

    // The whole file as it is now, mapped into memory; null when that fails.
    std::shared_ptr<const EventBytes> Map() const;

private:
    UniqueKernelHandle file_;
};

// The whole of a (small) file.
std::optional<std::string> ReadWholeFile(const std::wstring& path);

}  // namespace replay::platform
