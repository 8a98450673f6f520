#pragma once

#include "replay/calls/argument.h"
#include "replay/calls/handle_number.h"
#include "replay/calls/operation.h"
#include "replay/service/service.h"

#include <cstdint>
#include <exception>
#include <optional>
#include <string>

#include <windows.h>

namespace replay::service {

// One call in progress.
class Call {
public:
    // Counts the call and applies the script to it.
    Call(calls::ApiFunction function, calls::Arguments arguments);
    Call(const Call&) = delete;
    Call& operator=(const Call&) = delete;

    const calls::CallId& Id() const { return id_; }
    const script::CallEffects& Effects() const { return effects_; }
    calls::Operation& CurrentOperation() { return operation_; }

    // Adds a returned value to the call log.
    void Returns(std::wstring_view name, std::uint64_t value);
    // Adds the simulated time of this number of events.
    void Handled(std::size_t events) { operation_.OweEvents(events); }

    // Return the target of a handle. A misuse is recorded in the ledger and reported.
    calls::HandleTarget Use(HANDLE handle, calls::HandleKind kind) const;
    calls::HandleTarget UseAny(HANDLE handle) const;
    // Returns a new handle.
    HANDLE Open(calls::HandleKind kind, std::shared_ptr<calls::Object> object) const;

    // Waits for the rest of the simulated time, logs the call and sets the thread's last error.
    void Leave(std::wstring_view result, DWORD error);

private:
    calls::HandleTarget Reported(calls::HandleTarget target) const;
    bool IsAbout(const std::wstring& foldedChannel) const;

    Service& service_;
    calls::Arguments arguments_;
    calls::CallId id_;
    calls::Operation operation_;
    script::CallEffects effects_;
    std::uint64_t milliseconds_ = 0;
    std::wstring returned_;
};

// Runs the work of a call unless the script makes it fail. The work returns an error code, 0 for
// success; its exceptions are caught. Returns the code of a failed call, which a script may set to
// 0, because a failing call need not set a code.
template <typename Work>
std::optional<DWORD> FailureOf(const Call& call, Work&& work) {
    const script::CallEffects& effects = call.Effects();
    if (effects.failure && !effects.failsAfterWork) {
        return effects.failure;
    }
    DWORD error = ERROR_INTERNAL_ERROR;
    try {
        error = work();
    } catch (const std::exception&) {
        return error;
    }
    if (effects.failure && (error == ERROR_SUCCESS || error == ERROR_INSUFFICIENT_BUFFER)) {
        return effects.failure;
    }
    return error == ERROR_SUCCESS ? std::nullopt : std::optional<DWORD>(error);
}

// Runs the work of a call that reports success as a BOOL.
template <typename Work>
BOOL Serve(calls::ApiFunction function, calls::Arguments arguments, Work&& work) {
    Call call(function, arguments);
    const auto failure = FailureOf(call, [&] { return work(call); });
    call.Leave(failure ? L"FALSE" : L"TRUE", failure.value_or(ERROR_SUCCESS));
    return failure ? FALSE : TRUE;
}

// Runs the work of a call that returns a handle, which the work stores in its second argument.
template <typename Work>
HANDLE ServeHandle(calls::ApiFunction function, calls::Arguments arguments, Work&& work) {
    Call call(function, arguments);
    HANDLE handle = nullptr;
    const auto failure = FailureOf(call, [&] { return work(call, handle); });
    if (failure) {
        handle = nullptr;
    }
    call.Leave(calls::DescribeHandle(handle), failure.value_or(ERROR_SUCCESS));
    return handle;
}

}  // namespace replay::service
