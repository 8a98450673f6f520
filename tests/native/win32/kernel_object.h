#pragma once

#include <windows.h>

#include <memory>
#include <mutex>
#include <string>
#include <unordered_map>

namespace native {

// What a HANDLE stands for. It lives for as long as a handle, a mapped view or a waiter holds it.
class KernelObject {
public:
    KernelObject() = default;
    KernelObject(const KernelObject&) = delete;
    KernelObject& operator=(const KernelObject&) = delete;
    virtual ~KernelObject() = default;
};

// A handle is a block of memory of its own: one that is left open is a leak, one that is used
// after closing is read after it was freed, and the address sanitizer tells both.
HANDLE OpenHandle(std::shared_ptr<KernelObject> object);

// The object of an open handle.
const std::shared_ptr<KernelObject>& ObjectOf(HANDLE handle);

template <typename Object>
std::shared_ptr<Object> ObjectAs(HANDLE handle) {
    return std::dynamic_pointer_cast<Object>(ObjectOf(handle));
}

// The objects of one kind that have a name, for as long as they live.
template <typename Object>
class NamedObjects {
public:
    // The object of the name, or a new one that `make` makes; without a name always a new one.
    // Sets the last error to ERROR_ALREADY_EXISTS, or to 0.
    template <typename Make>
    std::shared_ptr<Object> FindOrMake(LPCWSTR name, Make make) {
        SetLastError(ERROR_SUCCESS);
        if (name == nullptr)
            return make();
        const std::lock_guard guard(mutex_);
        std::weak_ptr<Object>& entry = objects_[name];
        if (auto object = entry.lock()) {
            SetLastError(ERROR_ALREADY_EXISTS);
            return object;
        }
        auto object = make();
        entry = object;
        return object;
    }

    // Null when there is none of the name.
    std::shared_ptr<Object> Find(LPCWSTR name) {
        const std::lock_guard guard(mutex_);
        const auto entry = objects_.find(name);
        return entry == objects_.end() ? nullptr : entry->second.lock();
    }

private:
    std::mutex mutex_;
    std::unordered_map<std::wstring, std::weak_ptr<Object>> objects_;  // guarded by mutex_
};

}  // namespace native
