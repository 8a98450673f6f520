#pragma once

#include "replay/calls/api_function.h"
#include "replay/calls/object.h"
#include "replay/platform/lock.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <windows.h>

namespace replay::calls {

enum class HandleKind : std::uint8_t {
    kChannelEnum,
    kChannelConfig,
    kQuery,
    kSubscription,
    kEvent,
    kRenderContext,
    kLog,
    kBookmark,
    kPublisher,
};

constexpr std::wstring_view kHandleKindNames[] = {
    L"ChannelEnum",   L"ChannelConfig", L"Query",    L"Subscription", L"Event",
    L"RenderContext", L"Log",           L"Bookmark", L"Publisher",
};
constexpr std::size_t kHandleKindCount = std::size(kHandleKindNames);

// Identifies one call of the service.
struct CallId {
    ApiFunction function{};
    std::uint64_t sequence = 0;
};

// What a handle refers to. Without an object the handle must not be used.
struct HandleTarget {
    HandleKind kind{};
    std::shared_ptr<Object> object;
    std::uint64_t ordinal = 0;  // of an event in its source
    bool reverse = false;       // an event read against the order of the log

    explicit operator bool() const { return object != nullptr; }
};

// Every open handle, and the ledger of misuses. The number in a handle is never reused, so a
// closed handle is always recognised.
class HandleTable {
public:
    // Gives out a handle. `how` describes the call for the report.
    HANDLE Open(HandleKind kind, std::shared_ptr<Object> object, CallId call, std::wstring how);
    // One handle for each event.
    void OpenEvents(std::span<HandleTarget> events, CallId call, HANDLE* handles);

    // The target of a handle of the kind; anything else is noted in the ledger.
    HandleTarget Use(HANDLE handle, HandleKind kind, CallId call);
    // The target of a handle of any kind; noted only if the handle is not open.
    HandleTarget Use(HANDLE handle, CallId call);
    // The target without a note.
    HandleTarget Peek(HANDLE handle) const;

    // Closes the handle; false, and noted, if it is not open.
    bool Close(HANDLE handle, CallId call);

    // Number of open handles, of all kinds or of one.
    std::size_t CountOpen() const;
    std::size_t CountOpen(HandleKind kind) const;

    // One line for each handle that is open, events summed up by the call that returned them.
    std::vector<std::wstring> DescribeOpen() const;
    // One line for each misuse.
    std::vector<std::wstring> Faults() const;

    // Forgets every handle and fault.
    void Clear();

    // For the report at the end of the process. False if a thread died holding the lock.
    bool TryLock() { return lock_.try_lock(); }
    void Unlock() { lock_.unlock(); }
    std::vector<std::wstring> DescribeOpenLocked() const;
    const std::vector<std::wstring>& FaultsLocked() const { return faults_; }

private:
    struct Slot {
        HANDLE handle = nullptr;  // null: free
        HandleTarget target;
        CallId openedBy;
    };

    HANDLE Take(CallId call, HandleTarget target);  // with lock_ held, like the next ones
    const Slot* Find(HANDLE handle) const;
    void NoteUnusable(HANDLE handle, CallId call, std::wstring_view deed);

    mutable platform::Lock lock_;
    std::vector<Slot> slots_;  // guarded by lock_, like everything below
    std::vector<std::size_t> free_;
    std::uint64_t lastNumber_ = 0;
    std::array<std::size_t, kHandleKindCount> open_{};
    std::vector<std::pair<HANDLE, std::wstring>> how_;  // handle and the call that opened it
    std::vector<std::wstring> faults_;
};

}  // namespace replay::calls
