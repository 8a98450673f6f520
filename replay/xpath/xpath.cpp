#include "replay/xpath/xpath.h"

#include "replay/xpath/condition.h"
#include "replay/xpath/lexer.h"
#include "replay/xpath/parser.h"

namespace replay::xpath {

std::shared_ptr<const Expression> Expression::Compile(std::string_view query, std::string& error) {
    try {
        auto compiled = std::make_shared<Expression>();
        compiled->condition_ = ParseCondition(query);
        return compiled;
    } catch (const SyntaxError& failure) {
        error = failure.what();
        return nullptr;
    }
}

bool Expression::Matches(EventView& event) const {
    return condition_ == nullptr || Meets(*condition_, event);
}

}  // namespace replay::xpath
