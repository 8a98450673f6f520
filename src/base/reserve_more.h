#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace tavrin::base {

// Makes room for `count` more elements, so that appending them cannot fail. Grows
// geometrically, as push_back does. Throws std::bad_alloc and changes nothing.
template <typename T>
void ReserveMore(std::vector<T>& list, std::size_t count) {
    if (list.capacity() - list.size() < count) {
        list.reserve(std::max(list.size() + count, 2 * list.capacity()));
    }
}

}  // namespace tavrin::base
