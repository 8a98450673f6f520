#include "replay/calls/handle_table.h"

#include "replay/calls/handle_number.h"

#include <algorithm>
#include <map>
#include <mutex>
#include <numeric>
#include <shared_mutex>
#include <stdexcept>
#include <utility>

namespace replay::calls {
namespace {

std::wstring Describe(CallId call) {
    return std::wstring(NameOf(call.function)) + L" (call " + std::to_wstring(call.sequence) + L")";
}

std::wstring_view NameOfKind(HandleKind kind) {
    return kHandleKindNames[static_cast<std::size_t>(kind)];
}

}  // namespace

HANDLE HandleTable::Open(HandleKind kind, std::shared_ptr<Object> object, CallId call,
                         std::wstring how) {
    const std::lock_guard guard(lock_);
    const HANDLE handle = Take(call, {kind, std::move(object)});
    how_.emplace_back(handle, std::move(how));
    return handle;
}

void HandleTable::OpenEvents(std::span<HandleTarget> events, CallId call, HANDLE* handles) {
    const std::lock_guard guard(lock_);
    for (HandleTarget& event : events) {
        *handles++ = Take(call, std::move(event));
    }
}

HandleTarget HandleTable::Use(HANDLE handle, HandleKind kind, CallId call) {
    HandleTarget target = Use(handle, call);
    if (!target || target.kind == kind) {
        return target;
    }
    const std::lock_guard guard(lock_);
    faults_.push_back(std::wstring(L"wrong kind: ")
                          .append(NameOfKind(target.kind))
                          .append(L" ")
                          .append(DescribeHandle(handle))
                          .append(L" given as ")
                          .append(NameOfKind(kind))
                          .append(L" to ")
                          .append(Describe(call)));
    return {};
}

HandleTarget HandleTable::Use(HANDLE handle, CallId call) {
    {
        const std::shared_lock guard(lock_);
        if (const Slot* slot = Find(handle)) {
            return slot->target;
        }
    }
    const std::lock_guard guard(lock_);
    NoteUnusable(handle, call, L"used after closing");
    return {};
}

HandleTarget HandleTable::Peek(HANDLE handle) const {
    const std::shared_lock guard(lock_);
    const Slot* slot = Find(handle);
    return slot == nullptr ? HandleTarget{} : slot->target;
}

bool HandleTable::Close(HANDLE handle, CallId call) {
    HandleTarget closed;  // destroyed after the lock is released: an object's destructor may take
                          // other locks
    const std::lock_guard guard(lock_);
    const Slot* found = Find(handle);
    if (found == nullptr) {
        NoteUnusable(handle, call, L"closed twice");
        return false;
    }
    const std::size_t index = SlotOf(handle);
    Slot& slot = slots_[index];
    slot.handle = nullptr;
    closed = std::exchange(slot.target, {});
    --open_[static_cast<std::size_t>(closed.kind)];
    if (closed.kind != HandleKind::kEvent) {
        std::erase_if(how_, [handle](const auto& entry) { return entry.first == handle; });
    }
    free_.push_back(index);
    return true;
}

std::size_t HandleTable::CountOpen() const {
    const std::shared_lock guard(lock_);
    return std::accumulate(open_.begin(), open_.end(), std::size_t{0});
}

std::size_t HandleTable::CountOpen(HandleKind kind) const {
    const std::shared_lock guard(lock_);
    return open_[static_cast<std::size_t>(kind)];
}

std::vector<std::wstring> HandleTable::DescribeOpen() const {
    const std::shared_lock guard(lock_);
    return DescribeOpenLocked();
}

std::vector<std::wstring> HandleTable::Faults() const {
    const std::shared_lock guard(lock_);
    return faults_;
}

void HandleTable::Clear() {
    std::vector<Slot> gone;  // destroyed after the lock is released
    const std::lock_guard guard(lock_);
    gone.swap(slots_);
    free_.clear();
    open_.fill(0);
    how_.clear();
    faults_.clear();
}

std::vector<std::wstring> HandleTable::DescribeOpenLocked() const {
    std::vector<std::wstring> lines;
    for (const auto& [handle, how] : how_) {
        const Slot& slot = slots_[SlotOf(handle)];
        lines.push_back(std::wstring(L"open: ")
                            .append(NameOfKind(slot.target.kind))
                            .append(L" ")
                            .append(DescribeHandle(handle))
                            .append(L" from ")
                            .append(Describe(slot.openedBy))
                            .append(L": ")
                            .append(how));
    }
    std::map<std::uint64_t, std::size_t> events;
    for (const Slot& slot : slots_) {
        if (slot.handle != nullptr && slot.target.kind == HandleKind::kEvent) {
            ++events[slot.openedBy.sequence];
        }
    }
    for (const auto& [sequence, count] : events) {
        lines.push_back(L"open: " + std::to_wstring(count) + L" Event from " +
                        Describe(CallId{ApiFunction::kNext, sequence}));
    }
    return lines;
}

HANDLE HandleTable::Take(CallId call, HandleTarget target) {
    if (free_.empty()) {
        if (slots_.size() == kMostSlots) {
            throw std::length_error("too many open handles");
        }
        free_.push_back(slots_.size());
        slots_.emplace_back();
    }
    const std::size_t index = free_.back();
    free_.pop_back();
    ++open_[static_cast<std::size_t>(target.kind)];
    Slot& slot = slots_[index];
    slot.handle = MakeHandle(++lastNumber_, index);
    slot.target = std::move(target);
    slot.openedBy = call;
    return slot.handle;
}

const HandleTable::Slot* HandleTable::Find(HANDLE handle) const {
    const std::size_t index = SlotOf(handle);
    if (handle == nullptr || index >= slots_.size()) {
        return nullptr;
    }
    return slots_[index].handle == handle ? &slots_[index] : nullptr;
}

void HandleTable::NoteUnusable(HANDLE handle, CallId call, std::wstring_view misuse) {
    const std::uint64_t number = NumberOf(handle);
    const bool wasOpen = number != 0 && number <= lastNumber_;
    faults_.push_back(std::wstring(wasOpen ? misuse : L"never opened")
                          .append(L": ")
                          .append(DescribeHandle(handle))
                          .append(L" in ")
                          .append(Describe(call)));
}

}  // namespace replay::calls
