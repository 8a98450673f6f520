#pragma once

#include <string_view>

namespace replay::calls {

class PendingOperations;

// What a handle stands for.
class Object {
public:
    Object() = default;
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;
    virtual ~Object() = default;

    // Whether the object belongs to the channel (its name in folded case).
    virtual bool IsAbout(std::wstring_view /*foldedChannel*/) const { return false; }

    // The operations that can be cancelled; null if there are never any.
    virtual PendingOperations* Pending() { return nullptr; }
};

}  // namespace replay::calls
