#pragma once

#include "replay/xpath/system_field.h"

#include <memory>
#include <string>
#include <string_view>

namespace replay::xpath {

struct Condition;

// A compiled query of the service's XPath subset, as far as it asks for values of <System>.
class Expression {
public:
    // Matches every event.
    Expression() = default;

    // Compiles the query ("*", "*[System[Level=2]]"). On failure `error` says what is wrong and
    // where, and null is returned.
    static std::shared_ptr<const Expression> Compile(std::string_view query, std::string& error);

    bool MatchesAll() const { return condition_ == nullptr; }
    // Whether the event is one that the query asks for.
    bool Matches(EventView& event) const;

private:
    std::shared_ptr<const Condition> condition_;
};

}  // namespace replay::xpath
