#pragma once

#include <exception>
#include <thread>

namespace tavrin::test {

// Runs an action on a new thread, with fresh thread-local state, and waits for it. Rethrows the
// action's exception.
template <typename Action>
void OnFreshThread(Action action) {
    std::exception_ptr error;
    std::thread([&] {
        try {
            action();
        } catch (...) {
            error = std::current_exception();
        }
    }).join();
    if (error) {
        std::rethrow_exception(error);
    }
}

}  // namespace tavrin::test
