#pragma once

#include <memory>
#include <new>

#include <windows.h>

namespace tavrin::base {

// One T per thread, made on the thread's first use and destroyed with the thread, or with the slot.
// Replaces thread_local, whose memory mingw-w64 frees before its destructor runs.
template <typename T>
class ThreadSlot {
public:
    ThreadSlot() : index_(FlsAlloc(Destroy)) {}
    ~ThreadSlot() { FlsFree(index_); }
    ThreadSlot(const ThreadSlot&) = delete;
    ThreadSlot& operator=(const ThreadSlot&) = delete;

    // The calling thread's T. Throws std::bad_alloc if the system has no room for it.
    T& Get() {
        if (void* const own = FlsGetValue(index_)) {
            return *static_cast<T*>(own);
        }
        auto made = std::make_unique<T>();
        if (!FlsSetValue(index_, made.get())) {
            throw std::bad_alloc();
        }
        return *made.release();
    }

private:
    static void WINAPI Destroy(void* own) { delete static_cast<T*>(own); }

    DWORD index_;
};

}  // namespace tavrin::base
