#pragma once

#include <string>
#include <string_view>
#include <utility>

namespace replay::platform {

// Owns the bytes that views point to: a mapped file, a resource or a buffer.
class EventBytes {
public:
    virtual ~EventBytes() = default;
    virtual std::string_view View() const = 0;
};

// Bytes in an owned string.
class OwnedBytes final : public EventBytes {
public:
    explicit OwnedBytes(std::string bytes) : bytes_(std::move(bytes)) {}
    std::string_view View() const override { return bytes_; }

private:
    std::string bytes_;
};

}  // namespace replay::platform
