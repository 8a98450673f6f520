#pragma once

#include <string>

namespace tavrin::test {

// Returns the text of the exception that an action throws, "no exception" if it throws none.
// Other types of exceptions pass through.
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
