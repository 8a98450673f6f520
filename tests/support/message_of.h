#pragma once

#include <string>

namespace tavrin::test {

// The text of the exception of this type that an action ends with.
template <typename Exception, typename Action>
std::string MessageOf(Action action) {
    try {
        action();
    } catch (const Exception& error) {
        return error.what();
    }
    return "no exception";
}

}  // namespace tavrin::test
