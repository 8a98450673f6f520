#pragma once

#include <exception>
#include <thread>

namespace tavrin::test {

// Runs an action on a thread of its own and waits for it: what is kept for each thread
// is new for the action and gone after it. An exception is passed on.
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
