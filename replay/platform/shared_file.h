#pragma once

#include "replay/platform/event_bytes.h"
#include "replay/platform/file.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace replay::platform {

// A file open for reading while other processes may write to it.
class SharedFile {
public:
    explicit SharedFile(const std::wstring& path) : file_(OpenSharedFile(path)) {}

    // Whether the file was opened.
    explicit operator bool() const { return static_cast<bool>(file_); }
    std::uint64_t Size() const;

    // Reads from this offset to the current end of the file.
    std::string ReadFrom(std::uint64_t offset) const;

    // Maps the file at its current size into memory. Returns null on failure.
    std::shared_ptr<const EventBytes> Map() const;

private:
    UniqueKernelHandle file_;
};

// Reads a whole (small) file. Returns nothing if it cannot be opened.
std::optional<std::string> ReadWholeFile(const std::wstring& path);

}  // namespace replay::platform
