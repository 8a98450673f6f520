#pragma once

#include <utility>

namespace tavrin::base {

// Owns one platform handle and closes it with Close.
template <typename Handle, auto Close>
class UniqueHandle {
public:
    UniqueHandle() = default;
    explicit UniqueHandle(Handle handle) noexcept : handle_(handle) {}
    UniqueHandle(UniqueHandle&& other) noexcept : handle_(std::exchange(other.handle_, Handle{})) {}
    UniqueHandle& operator=(UniqueHandle other) noexcept {
        std::swap(handle_, other.handle_);
        return *this;
    }
    UniqueHandle(const UniqueHandle&) = delete;
    ~UniqueHandle() {
        if (handle_) {
            Close(handle_);
        }
    }

    Handle get() const noexcept { return handle_; }
    explicit operator bool() const noexcept { return handle_ != Handle{}; }

    // Closes the handle and becomes empty.
    void reset() noexcept { *this = UniqueHandle(); }

private:
    Handle handle_{};
};

}  // namespace tavrin::base
