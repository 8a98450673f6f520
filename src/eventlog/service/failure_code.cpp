#include "eventlog/service/failure_code.h"

#include <new>
#include <system_error>

namespace tavrin::eventlog {

std::uint32_t FailureCodeOf(const std::exception& caught) {
    if (dynamic_cast<const std::bad_alloc*>(&caught) != nullptr) {
        return ERROR_NOT_ENOUGH_MEMORY;
    }
    if (dynamic_cast<const std::system_error*>(&caught) != nullptr) {
        return ERROR_MAX_THRDS_REACHED;
    }
    return ERROR_INTERNAL_ERROR;
}

}  // namespace tavrin::eventlog
