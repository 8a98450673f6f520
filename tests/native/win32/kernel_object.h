#pragma once

#include <windows.h>

#include <memory>
#include <mutex>
#include <string>
#include <unordered_map>

namespace native {

// The object behind a HANDLE. It lives while a handle, a mapped view or a waiter holds it.
class KernelObject {
public:
    KernelObject() = default;
    KernelObject(const KernelObject&) = delete;
    KernelObject& operator=(const KernelObject&) = delete;
    virtual ~KernelObject() = default;
};

// Each handle is a separate heap block. The address sanitizer reports an unclosed handle as a leak
// and a closed one that is used as a use after free.
HANDLE OpenHandle(std::shared_ptr<KernelObject> object);

// Returns the object of an open handle.
const std::shared_ptr<KernelObject>& ObjectOf(HANDLE handle);

template <typename Object>
std::shared_ptr<Object> ObjectAs(HANDLE handle) {
    return std::dynamic_pointer_cast<Object>(ObjectOf(handle));
}

// Finds the living named objects of one kind.
template <typename Object>
class NamedObjects {
public:
    // Returns the object of this name, or calls `make` if there is none or `name` is null. Sets the
    // last error to ERROR_ALREADY_EXISTS if the object exists, otherwise to 0.
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

    // Returns null if no object has this name.
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
