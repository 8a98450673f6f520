#include "replay/xpath/xpath.h"

#include "replay/xpath/condition.h"
#include "replay/xpath/lexer.h"
#include "replay/xpath/parser.h"

namespace replay {

std::shared_ptr<const XPath> XPath::Compile(std::string_view query, std::string& error) {
    try {
        auto compiled = std::make_shared<XPath>();
        compiled->condition_ = ParseXPath(query);
        return compiled;
    } catch (const XPathError& failure) {
        error = failure.what();
        return nullptr;
    }
}

bool XPath::Matches(EventView& event) const {
    return condition_ == nullptr || Meets(*condition_, event);
}

}  // namespace replay
