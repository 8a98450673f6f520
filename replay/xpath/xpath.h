#pragma once

#include "replay/xpath/system_field.h"

#include <memory>
#include <string>
#include <string_view>

namespace replay::xpath {

struct Condition;

// A compiled query in the service's XPath subset, limited to values of <System>.
class Expression {
public:
    // Matches every event.
    Expression() = default;

    // Compiles a query such as "*" or "*[System[Level=2]]". On failure returns null and describes
    // the error and its position in `error`.
    static std::shared_ptr<const Expression> Compile(std::string_view query, std::string& error);

    bool MatchesAll() const { return condition_ == nullptr; }
    // Whether the query selects the event.
    bool Matches(EventView& event) const;

private:
    std::shared_ptr<const Condition> condition_;
};

}  // namespace replay::xpath
