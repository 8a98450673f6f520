#pragma once

namespace tavrin::test {

// How long allocations fail.
enum class Shortage { Once, FromThenOn };

// As long as it lives, the n-th allocation of the program fails, and all later ones if the
// shortage lasts: operator new throws std::bad_alloc. Allocations of the replay service do not
// count. A program that uses it must link failing_allocations.cpp. One at a time.
class FailingAllocations {
public:
    FailingAllocations(int n, Shortage shortage);
    FailingAllocations(const FailingAllocations&) = delete;
    FailingAllocations& operator=(const FailingAllocations&) = delete;
    ~FailingAllocations();

    // Whether an allocation has failed: false if there were fewer than n.
    bool HaveFailed() const;
};

}  // namespace tavrin::test
