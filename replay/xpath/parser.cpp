#include "replay/xpath/parser.h"

#include "replay/text/event_time.h"
#include "replay/text/numbers.h"
#include "replay/xpath/lexer.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

namespace replay::xpath {
namespace {

// Windows rejects a query with more tests.
constexpr std::size_t kMostTests = 22;
// Prevents a stack overflow by nested parentheses.
constexpr std::size_t kDeepestNesting = 200;

struct Operator {
    std::string_view symbol;
    Comparison comparison;
};
constexpr Operator kOperators[] = {
    {"=", Comparison::kEqual},   {"!=", Comparison::kNotEqual},
    {"<", Comparison::kLess},    {"<=", Comparison::kLessOrEqual},
    {">", Comparison::kGreater}, {">=", Comparison::kGreaterOrEqual},
};

// A parsed path: its place and the condition of its predicates.
struct Path {
    std::string place;  // "System/Provider/@Name"
    ConditionPtr condition;
};

ConditionPtr Join(Condition::Kind kind, ConditionPtr left, ConditionPtr right) {
    if (left == nullptr) {
        return right;
    }
    if (right == nullptr) {
        return left;
    }
    Condition joined;
    joined.kind = kind;
    joined.left = std::move(left);
    joined.right = std::move(right);
    return std::make_shared<Condition>(std::move(joined));
}

ConditionPtr And(ConditionPtr left, ConditionPtr right) {
    return Join(Condition::Kind::kAnd, std::move(left), std::move(right));
}

// A recursive descent parser. A condition contains the full path of its field, so it is evaluated
// without a context.
class Parser {
public:
    explicit Parser(std::string_view query) : tokens_(ReadTokens(query)) {}

    ConditionPtr ReadQuery() {
        if (!Accept("*") && !AcceptName("Event")) {
            Fail("a query begins with \"*\" or \"Event\"");
        }
        Path path{"", ReadPredicates("")};
        if (Accept("/")) {
            path = ReadSteps("", std::move(path.condition));
            path.condition = And(std::move(path.condition), Exists(path.place));
        }
        if (Current().kind != Token::Kind::kEnd) {
            Fail("the query does not end here");
        }
        return path.condition;
    }

private:
    ConditionPtr ReadPredicates(const std::string& place) {
        ConditionPtr all;
        while (Accept("[")) {
            all = And(std::move(all), ReadOr(place));
            Expect("]");
        }
        return all;
    }

    ConditionPtr ReadOr(const std::string& place) {
        if (++nesting_ > kDeepestNesting) {
            Fail("nested too deeply");
        }
        ConditionPtr condition = ReadAnd(place);
        while (AcceptName("or")) {
            condition = Join(Condition::Kind::kOr, std::move(condition), ReadAnd(place));
        }
        --nesting_;
        return condition;
    }

    ConditionPtr ReadAnd(const std::string& place) {
        ConditionPtr condition = ReadTest(place);
        while (AcceptName("and")) {
            condition = And(std::move(condition), ReadTest(place));
        }
        return condition;
    }

    ConditionPtr ReadTest(const std::string& place) {
        if (Accept("(")) {
            ConditionPtr condition = ReadOr(place);
            Expect(")");
            return condition;
        }
        if (Current().IsName("band") && Following().IsSymbol("(")) {
            return ReadBand(place);
        }
        if (Current().IsName("timediff") && Following().IsSymbol("(")) {
            return ReadAge(place);
        }
        if (Current().kind != Token::Kind::kName && !Current().IsSymbol("@")) {
            Fail("the name of an element or attribute is expected");
        }
        Path path = ReadSteps(place, nullptr);
        const std::optional<Comparison> comparison = AcceptComparison();
        ConditionPtr test =
            comparison ? ReadComparison(path.place, *comparison) : Exists(path.place);
        // A path with predicates and no comparison tests only its predicates.
        if (!comparison && path.condition != nullptr) {
            return path.condition;
        }
        return And(std::move(path.condition), std::move(test));
    }

    // Reads steps such as System/Provider[@Name='x']/@Guid, relative to `from`.
    Path ReadSteps(const std::string& from, ConditionPtr condition) {
        Path path{from, std::move(condition)};
        do {
            path.place.append(path.place.empty() ? "" : "/").append(Accept("@") ? "@" : "");
            path.place.append(ExpectName());
            if (path.place != "System" && !path.place.starts_with("System/")) {
                Fail("only values of System can be asked for");
            }
            path.condition = And(std::move(path.condition), ReadPredicates(path.place));
        } while (Accept("/"));
        return path;
    }

    static ConditionPtr Exists(const std::string& place) {
        Condition condition;
        condition.kind = Condition::Kind::kExists;
        condition.field = FindSystemField(place);
        return std::make_shared<Condition>(std::move(condition));
    }

    ConditionPtr ReadComparison(const std::string& place, Comparison comparison) {
        CountTest();
        Condition condition;
        condition.field = FindSystemField(place);
        condition.comparison = comparison;
        const Token constant = ExpectConstant();
        const FieldType type = TypeOf(condition.field);
        if (type == FieldType::kNumber || type == FieldType::kTime) {
            condition.kind = Condition::Kind::kCompareNumber;
            condition.whole = ToNumber(constant, type);
        } else {
            condition.kind = Condition::Kind::kCompareText;
            condition.text = std::string(constant.text);
        }
        return std::make_shared<Condition>(std::move(condition));
    }

    // Reads band(Keywords, 4096).
    ConditionPtr ReadBand(const std::string& place) {
        CountTest();
        Condition condition;
        condition.kind = Condition::Kind::kBand;
        Skip(2);
        condition.field = FindSystemField(ReadSteps(place, nullptr).place);
        Expect(",");
        condition.whole = ToNumber(ExpectConstant(), FieldType::kNumber);
        Expect(")");
        if (TypeOf(condition.field) != FieldType::kNumber) {
            Fail("band() takes a number");
        }
        return std::make_shared<Condition>(std::move(condition));
    }

    // Reads timediff(@SystemTime) <= 86400000. A second argument gives the end time, otherwise now.
    ConditionPtr ReadAge(const std::string& place) {
        CountTest();
        Condition condition;
        condition.kind = Condition::Kind::kAge;
        Skip(2);
        condition.field = FindSystemField(ReadSteps(place, nullptr).place);
        if (Accept(",")) {
            condition.until = ToNumber(ExpectConstant(), FieldType::kTime);
        }
        Expect(")");
        if (TypeOf(condition.field) != FieldType::kTime) {
            Fail("timediff() takes a time");
        }
        const auto comparison = AcceptComparison();
        if (!comparison) {
            Fail("a comparison is expected");
        }
        condition.comparison = *comparison;
        const double sign = Accept("-") ? -1.0 : 1.0;
        condition.number =
            sign * static_cast<double>(ToNumber(ExpectConstant(), FieldType::kNumber));
        return std::make_shared<Condition>(std::move(condition));
    }

    std::uint64_t ToNumber(const Token& constant, FieldType type) const {
        const auto number = type == FieldType::kTime ? text::ParseEventTime(constant.text)
                                                     : text::ParseHexOrDecimal(constant.text);
        if (!number) {
            throw SyntaxError(type == FieldType::kTime ? "no time" : "no whole number",
                              constant.offset);
        }
        return *number;
    }

    void CountTest() {
        if (++tests_ > kMostTests) {
            Fail("too many tests");
        }
    }

    const Token& Current() const { return tokens_[at_]; }
    const Token& Following() const { return tokens_[std::min(at_ + 1, tokens_.size() - 1)]; }
    void Skip(std::size_t count) { at_ = std::min(at_ + count, tokens_.size() - 1); }

    bool Accept(std::string_view symbol) {
        const bool found = Current().IsSymbol(symbol);
        if (found) {
            Skip(1);
        }
        return found;
    }

    bool AcceptName(std::string_view name) {
        const bool found = Current().IsName(name);
        if (found) {
            Skip(1);
        }
        return found;
    }

    std::optional<Comparison> AcceptComparison() {
        for (const Operator& candidate : kOperators) {
            if (Accept(candidate.symbol)) {
                return candidate.comparison;
            }
        }
        return std::nullopt;
    }

    void Expect(std::string_view symbol) {
        if (!Accept(symbol)) {
            Fail(std::string("\"").append(symbol).append("\" is expected"));
        }
    }

    std::string_view ExpectName() {
        const Token token = Current();
        if (token.kind != Token::Kind::kName) {
            Fail("a name is expected");
        }
        Skip(1);
        return token.text;
    }

    Token ExpectConstant() {
        const Token token = Current();
        if (token.kind != Token::Kind::kNumber && token.kind != Token::Kind::kLiteral) {
            Fail("a number or a text in quotes is expected");
        }
        Skip(1);
        return token;
    }

    [[noreturn]] void Fail(std::string_view reason) const {
        throw SyntaxError(reason, Current().offset);
    }

    std::vector<Token> tokens_;
    std::size_t at_ = 0;
    std::size_t tests_ = 0;
    std::size_t nesting_ = 0;
};

}  // namespace

ConditionPtr ParseCondition(std::string_view query) {
    return Parser(query).ReadQuery();
}

}  // namespace replay::xpath
