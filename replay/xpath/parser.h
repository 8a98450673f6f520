#pragma once

#include "replay/xpath/condition.h"

#include <string_view>

namespace replay::xpath {

// The condition that a query states. Throws SyntaxError if the query cannot be read.
ConditionPtr ParseCondition(std::string_view query);

}  // namespace replay::xpath
