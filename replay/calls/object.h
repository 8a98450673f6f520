#pragma once

#include <string_view>

namespace replay::calls {

class PendingOperations;

// The object behind a handle.
class Object {
public:
    Object() = default;
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;
    virtual ~Object() = default;

    // Whether the object belongs to this channel, whose name is in folded case.
    virtual bool IsAbout(std::wstring_view /*foldedChannel*/) const { return false; }

    // The pending operations, which can be cancelled. Null if the object never has any.
    virtual PendingOperations* Pending() { return nullptr; }
};

}  // namespace replay::calls
