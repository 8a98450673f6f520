#include "waitable.h"

#include <chrono>
#include <optional>
#include <span>

namespace native {
namespace {

// Never destroyed, like all global state here: threads may use it while the process ends.
NamedObjects<Waitable>& Events() {
    static auto& events = *new NamedObjects<Waitable>;
    return events;
}

using Waitables = std::vector<std::shared_ptr<Waitable>>;

// Registers a waiter with several objects while it lives.
class Registration {
public:
    Registration(Waiter& waiter, const Waitables& objects) : waiter_(waiter), objects_(objects) {
        for (const auto& object : objects_)
            object->AddWaiter(waiter_);
    }
    Registration(const Registration&) = delete;
    Registration& operator=(const Registration&) = delete;
    ~Registration() {
        for (const auto& object : objects_)
            object->RemoveWaiter(waiter_);
    }

private:
    Waiter& waiter_;
    const Waitables& objects_;
};

std::optional<DWORD> TakeFirst(const Waitables& objects) {
    for (std::size_t i = 0; i < objects.size(); ++i)
        if (objects[i]->Take())
            return static_cast<DWORD>(i);
    return std::nullopt;
}

DWORD WaitForAny(const Waitables& objects, DWORD milliseconds) {
    using Clock = std::chrono::steady_clock;
    constexpr auto kForEver = std::chrono::hours(24);
    const auto deadline =
        Clock::now() + (milliseconds == INFINITE ? Clock::duration(kForEver)
                                                 : std::chrono::milliseconds(milliseconds));
    Waiter waiter;
    const Registration registration(waiter, objects);
    do {
        if (const auto taken = TakeFirst(objects))
            return WAIT_OBJECT_0 + *taken;
    } while (waiter.WaitUntil(deadline));
    return WAIT_TIMEOUT;
}

}  // namespace

void Waiter::Wake() {
    // Notifies under the lock: the waiter may be destroyed as soon as the lock is released.
    const std::lock_guard guard(mutex_);
    woken_ = true;
    condition_.notify_one();
}

void Waitable::Set() {
    const std::lock_guard guard(mutex_);
    signalled_ = true;
    for (Waiter* waiter : waiters_)
        waiter->Wake();
}

void Waitable::Reset() {
    const std::lock_guard guard(mutex_);
    signalled_ = false;
}

bool Waitable::Take() {
    const std::lock_guard guard(mutex_);
    const bool was = signalled_;
    signalled_ = signalled_ && manualReset_;
    return was;
}

void Waitable::AddWaiter(Waiter& waiter) {
    const std::lock_guard guard(mutex_);
    waiters_.push_back(&waiter);
}

void Waitable::RemoveWaiter(Waiter& waiter) {
    const std::lock_guard guard(mutex_);
    std::erase(waiters_, &waiter);
}

}  // namespace native

using namespace native;

HANDLE CreateEventW(LPSECURITY_ATTRIBUTES, BOOL manualReset, BOOL signalled, LPCWSTR name) {
    return OpenHandle(Events().FindOrMake(name, [&] {
        return std::make_shared<Waitable>(manualReset != FALSE, signalled != FALSE);
    }));
}

BOOL SetEvent(HANDLE event) {
    ObjectAs<Waitable>(event)->Set();
    return TRUE;
}

BOOL ResetEvent(HANDLE event) {
    ObjectAs<Waitable>(event)->Reset();
    return TRUE;
}

DWORD WaitForSingleObject(HANDLE object, DWORD milliseconds) {
    return WaitForMultipleObjects(1, &object, FALSE, milliseconds);
}

// Always waits for any object: no caller waits for all.
DWORD WaitForMultipleObjects(DWORD count, const HANDLE* objects, BOOL, DWORD milliseconds) {
    Waitables waitables;
    for (const HANDLE handle : std::span(objects, count))
        waitables.push_back(ObjectAs<Waitable>(handle));
    return WaitForAny(waitables, milliseconds);
}
