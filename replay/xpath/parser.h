#pragma once

#include "replay/xpath/condition.h"

#include <string_view>

namespace replay {

// The condition that a query states. Throws XPathError if the query cannot be read.
XPathConditionPtr ParseXPath(std::string_view query);

}  // namespace replay
