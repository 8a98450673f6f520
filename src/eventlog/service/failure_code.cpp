#include "eventlog/service/failure_code.h"

#include <ios>
#include <new>
#include <system_error>

namespace tavrin::eventlog {

std::uint32_t FailureCodeOf(const std::exception& caught) {
    // Every stream here writes into a string; some libraries report its want of memory so.
    if (dynamic_cast<const std::bad_alloc*>(&caught) != nullptr ||
        dynamic_cast<const std::ios_base::failure*>(&caught) != nullptr) {
        return ERROR_NOT_ENOUGH_MEMORY;
    }
    if (dynamic_cast<const std::system_error*>(&caught) != nullptr) {
        return ERROR_MAX_THRDS_REACHED;
    }
    return ERROR_INTERNAL_ERROR;
}

}  // namespace tavrin::eventlog
