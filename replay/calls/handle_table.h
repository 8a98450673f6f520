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

// What a handle refers to. If the object is null, the handle must not be used.
struct HandleTarget {
    HandleKind kind{};
    std::shared_ptr<Object> object;
    std::uint64_t ordinal = 0;  // of an event: its index in the source
    bool reverse = false;       // the event was read newest first

    explicit operator bool() const { return object != nullptr; }
};

// The open handles and the ledger of misuses. A handle's serial number is never reused, so a closed
// handle is always recognised. Thread-safe.
class HandleTable {
public:
    // Returns a new handle. `how` describes the call in the report.
    HANDLE Open(HandleKind kind, std::shared_ptr<Object> object, CallId call, std::wstring how);
    // Stores a new handle for each event in `handles`.
    void OpenEvents(std::span<HandleTarget> events, CallId call, HANDLE* handles);

    // Returns the target of an open handle of this kind. Otherwise records a misuse and returns a
    // target without an object.
    HandleTarget Use(HANDLE handle, HandleKind kind, CallId call);
    // The same for a handle of any kind.
    HandleTarget Use(HANDLE handle, CallId call);
    // The same without recording a misuse.
    HandleTarget Peek(HANDLE handle) const;

    // Closes the handle. If it is not open, records a misuse and returns false.
    bool Close(HANDLE handle, CallId call);

    // Number of open handles, of any kind or of one kind.
    std::size_t CountOpen() const;
    std::size_t CountOpen(HandleKind kind) const;

    // One line per open handle. The events of one call share a line.
    std::vector<std::wstring> DescribeOpen() const;
    // One line per misuse.
    std::vector<std::wstring> Faults() const;

    // Forgets every handle and fault.
    void Clear();

    // For the report at process exit, where a terminated thread may have left the lock held.
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

    HANDLE Take(CallId call, HandleTarget target);  // requires lock_, like the functions below
    const Slot* Find(HANDLE handle) const;
    void NoteUnusable(HANDLE handle, CallId call, std::wstring_view misuse);

    mutable platform::Lock lock_;
    std::vector<Slot> slots_;  // guarded by lock_, like the fields below
    std::vector<std::size_t> free_;
    std::uint64_t lastNumber_ = 0;
    std::array<std::size_t, kHandleKindCount> open_{};
    std::vector<std::pair<HANDLE, std::wstring>>
        how_;  // handle and description of the call that opened it
    std::vector<std::wstring> faults_;
};

}  // namespace replay::calls
