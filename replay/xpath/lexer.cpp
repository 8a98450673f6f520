#include "replay/xpath/lexer.h"

#include "replay/text/blanks.h"

#include <algorithm>

namespace replay::xpath {
namespace {

constexpr std::string_view kDigits = "0123456789";
// Longer symbols first, so that "<=" is not read as "<".
constexpr std::string_view kSymbols[] = {"!=", "<=", ">=", "=", "<", ">", "[", "]",
                                         "(",  ")",  "@",  "/", ",", "*", "-"};

bool IsNameStart(char character) {
    return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z') ||
           character == '_' || static_cast<unsigned char>(character) >= 0x80U;
}

bool IsNamePart(char character) {
    return IsNameStart(character) || kDigits.find(character) != std::string_view::npos ||
           character == '-' || character == '.';
}

std::size_t NameLength(std::string_view text) {
    const auto end = std::ranges::find_if_not(text, IsNamePart);
    return static_cast<std::size_t>(end - text.begin());
}

std::size_t NumberLength(std::string_view text) {
    return std::min(text.find_first_not_of("0123456789."), text.size());
}

std::size_t SymbolLength(std::string_view text, std::size_t offset) {
    for (const std::string_view symbol : kSymbols) {
        if (text.starts_with(symbol)) {
            return symbol.size();
        }
    }
    throw SyntaxError("unexpected character", offset);
}

std::size_t LiteralLength(std::string_view text, std::size_t offset) {
    const std::size_t end = text.find(text.front(), 1);
    if (end == std::string_view::npos) {
        throw SyntaxError("a text does not end", offset);
    }
    return end + 1;
}

Token ReadToken(std::string_view rest, std::size_t offset) {
    const char first = rest.front();
    using Kind = Token::Kind;
    if (IsNameStart(first)) {
        return {Kind::kName, rest.substr(0, NameLength(rest)), offset};
    }
    if (kDigits.find(first) != std::string_view::npos) {
        return {Kind::kNumber, rest.substr(0, NumberLength(rest)), offset};
    }
    if (first == '\'' || first == '"') {
        return {Kind::kLiteral, rest.substr(0, LiteralLength(rest, offset)), offset};
    }
    return {Kind::kSymbol, rest.substr(0, SymbolLength(rest, offset)), offset};
}

}  // namespace

std::vector<Token> ReadTokens(std::string_view query) {
    std::vector<Token> tokens;
    std::size_t at = query.find_first_not_of(text::kBlanks);
    while (at != std::string_view::npos) {
        Token token = ReadToken(query.substr(at), at);
        at = query.find_first_not_of(text::kBlanks, at + token.text.size());
        if (token.kind == Token::Kind::kLiteral) {
            token.text = token.text.substr(1, token.text.size() - 2);
        }
        tokens.push_back(token);
    }
    tokens.push_back({Token::Kind::kEnd, {}, query.size()});
    return tokens;
}

}  // namespace replay::xpath
