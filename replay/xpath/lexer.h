#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace replay::xpath {

// Thrown if a query cannot be compiled. Caught by Expression::Compile.
class SyntaxError : public std::runtime_error {
public:
    SyntaxError(std::string_view reason, std::size_t offset)
        : std::runtime_error(std::string(reason) + " at character " + std::to_string(offset)) {}
};

struct Token {
    enum class Kind { kName, kNumber, kLiteral, kSymbol, kEnd };

    Kind kind{};
    std::string_view text;  // a literal without its quotes
    std::size_t offset = 0;

    bool IsSymbol(std::string_view symbol) const { return kind == Kind::kSymbol && text == symbol; }
    bool IsName(std::string_view name) const { return kind == Kind::kName && text == name; }
};

// Splits a query into tokens. The last token is of kind kEnd.
std::vector<Token> ReadTokens(std::string_view query);

}  // namespace replay::xpath
