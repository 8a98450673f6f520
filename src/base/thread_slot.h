#pragma once

#include <memory>
#include <new>

#include <windows.h>

namespace tavrin::base {

// One T for each thread that asks, made when it first does and destroyed with the
// thread; what is left is destroyed with the slot. A thread_local variable would not
// do: with mingw-w64 its memory is freed before its destructor runs.
template <typename T>
class ThreadSlot {
public:
    ThreadSlot() : index_(FlsAlloc(Destroy)) {}
    ~ThreadSlot() { FlsFree(index_); }
    ThreadSlot(const ThreadSlot&) = delete;
    ThreadSlot& operator=(const ThreadSlot&) = delete;

    // The calling thread's own. Throws std::bad_alloc where the system has no room.
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
