#include <windows.h>

#include <map>
#include <mutex>
#include <set>
#include <utility>
#include <vector>

namespace {

class ThreadValues;

// The allocated indexes and the threads that hold values. Never destroyed: a thread may end after
// main.
struct Indexes {
    std::mutex mutex;
    std::map<DWORD, PFLS_CALLBACK_FUNCTION> destroyers;  // guarded by mutex, like the fields below
    std::set<ThreadValues*> threads;
    DWORD last = 0;

    static Indexes& Get() {
        static auto& indexes = *new Indexes;
        return indexes;
    }
};

// A value to destroy once no lock is held.
struct Leaving {
    PFLS_CALLBACK_FUNCTION destroy;
    void* value;
};

void Destroy(const std::vector<Leaving>& values) {
    for (const Leaving& leaving : values)
        leaving.destroy(leaving.value);
}

// The values of one thread, destroyed when it ends.
class ThreadValues {
public:
    ThreadValues() {
        const std::lock_guard guard(indexes_.mutex);
        indexes_.threads.insert(this);
    }
    ThreadValues(const ThreadValues&) = delete;
    ThreadValues& operator=(const ThreadValues&) = delete;
    ~ThreadValues() {
        std::vector<Leaving> leaving;
        {
            const std::lock_guard guard(indexes_.mutex);
            indexes_.threads.erase(this);
            for (const auto& [index, destroy] : indexes_.destroyers)
                Remove(index, destroy, leaving);
        }
        Destroy(leaving);
    }

    static ThreadValues& Own() {
        thread_local ThreadValues values;
        return values;
    }

    void* Get(DWORD index) {
        const std::lock_guard guard(mutex_);
        const auto entry = values_.find(index);
        return entry == values_.end() ? nullptr : entry->second;
    }

    void Set(DWORD index, void* value) {
        const std::lock_guard guard(mutex_);
        values_[index] = value;
    }

    // Moves the value of this index to `leaving`. Requires the lock of the indexes.
    void Remove(DWORD index, PFLS_CALLBACK_FUNCTION destroy, std::vector<Leaving>& leaving) {
        const std::lock_guard guard(mutex_);
        const auto entry = values_.find(index);
        if (entry == values_.end())
            return;
        if (destroy != nullptr && entry->second != nullptr)
            leaving.push_back({destroy, entry->second});
        values_.erase(entry);
    }

private:
    Indexes& indexes_ = Indexes::Get();
    // Per thread: a shared mutex would order the threads and hide races.
    std::mutex mutex_;
    std::map<DWORD, void*> values_;  // guarded by mutex_
};

}  // namespace

DWORD FlsAlloc(PFLS_CALLBACK_FUNCTION destroy) {
    Indexes& indexes = Indexes::Get();
    const std::lock_guard guard(indexes.mutex);
    indexes.destroyers[++indexes.last] = destroy;
    return indexes.last;
}

BOOL FlsFree(DWORD index) {
    Indexes& indexes = Indexes::Get();
    std::vector<Leaving> leaving;
    {
        const std::lock_guard guard(indexes.mutex);
        const auto entry = indexes.destroyers.find(index);
        if (entry == indexes.destroyers.end())
            return FALSE;
        for (ThreadValues* thread : indexes.threads)
            thread->Remove(index, entry->second, leaving);
        indexes.destroyers.erase(entry);
    }
    Destroy(leaving);
    return TRUE;
}

void* FlsGetValue(DWORD index) {
    return ThreadValues::Own().Get(index);
}

BOOL FlsSetValue(DWORD index, void* value) {
    ThreadValues::Own().Set(index, value);
    return TRUE;
}
