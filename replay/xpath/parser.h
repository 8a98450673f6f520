#pragma once

#include "replay/xpath/condition.h"

#include <string_view>

namespace replay::xpath {

// Parses a query. Throws SyntaxError if it is malformed.
ConditionPtr ParseCondition(std::string_view query);

}  // namespace replay::xpath
