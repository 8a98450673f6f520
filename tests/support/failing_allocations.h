#pragma once

namespace tavrin::test {

// How long allocations fail.
enum class Shortage { Once, FromThenOn };

// While it exists, the program's n-th allocation fails, and with Shortage::FromThenOn every later
// one: operator new throws std::bad_alloc. Allocations of the replay service do not count. A
// program that uses it must link failing_allocations.cpp. Only one may exist at a time.
class FailingAllocations {
public:
    FailingAllocations(int n, Shortage shortage);
    FailingAllocations(const FailingAllocations&) = delete;
    FailingAllocations& operator=(const FailingAllocations&) = delete;
    ~FailingAllocations();

    // Returns whether an allocation has failed: false after fewer than n allocations.
    bool HaveFailed() const;
};

}  // namespace tavrin::test
