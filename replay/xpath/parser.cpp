#include "replay/xpath/parser.h"

#include "replay/text/event_time.h"
#include "replay/text/numbers.h"
#include "replay/xpath/lexer.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

namespace replay {
namespace {

using Condition = XPathConditionPtr;

// The service refuses a query of more tests than this.
constexpr std::size_t kMostTests = 22;
// Keeps a query of many parentheses from using up the stack.
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

// A path as read: where it leads and what its predicates ask.
struct Path {
    std::string place;  // "System/Provider/@Name"
    Condition condition;
};

Condition Join(XPathCondition::Kind kind, Condition left, Condition right) {
    if (left == nullptr)
        return right;
    if (right == nullptr)
        return left;
    XPathCondition joined;
    joined.kind = kind;
    joined.left = std::move(left);
    joined.right = std::move(right);
    return std::make_shared<XPathCondition>(std::move(joined));
}

Condition And(Condition left, Condition right) {
    return Join(XPathCondition::Kind::kAnd, std::move(left), std::move(right));
}

// Recursive descent over the tokens. A condition knows the whole place of its field, so that no
// context is needed when it is tested.
class Parser {
public:
    explicit Parser(std::string_view query) : tokens_(ReadXPathTokens(query)) {}

    Condition ReadQuery() {
        if (!Accept("*") && !AcceptName("Event"))
            Fail("a query begins with \"*\" or \"Event\"");
        Path path{"", ReadPredicates("")};
        if (Accept("/")) {
            path = ReadSteps("", std::move(path.condition));
            path.condition = And(std::move(path.condition), Exists(path.place));
        }
        if (Current().kind != XPathToken::Kind::kEnd)
            Fail("the query does not end here");
        return path.condition;
    }

private:
    Condition ReadPredicates(const std::string& place) {
        Condition all;
        while (Accept("[")) {
            all = And(std::move(all), ReadOr(place));
            Expect("]");
        }
        return all;
    }

    Condition ReadOr(const std::string& place) {
        if (++nesting_ > kDeepestNesting)
            Fail("nested too deeply");
        Condition condition = ReadAnd(place);
        while (AcceptName("or"))
            condition = Join(XPathCondition::Kind::kOr, std::move(condition), ReadAnd(place));
        --nesting_;
        return condition;
    }

    Condition ReadAnd(const std::string& place) {
        Condition condition = ReadTest(place);
        while (AcceptName("and"))
            condition = And(std::move(condition), ReadTest(place));
        return condition;
    }

    Condition ReadTest(const std::string& place) {
        if (Accept("(")) {
            Condition condition = ReadOr(place);
            Expect(")");
            return condition;
        }
        if (Current().IsName("band") && Following().IsSymbol("("))
            return ReadBand(place);
        if (Current().IsName("timediff") && Following().IsSymbol("("))
            return ReadAge(place);
        if (Current().kind != XPathToken::Kind::kName && !Current().IsSymbol("@"))
            Fail("the name of an element or attribute is expected");
        Path path = ReadSteps(place, nullptr);
        const std::optional<Comparison> comparison = AcceptComparison();
        Condition test = comparison ? ReadComparison(path.place, *comparison) : Exists(path.place);
        // The predicates of a path that leads to nothing else already ask for all there is.
        if (!comparison && path.condition != nullptr)
            return path.condition;
        return And(std::move(path.condition), std::move(test));
    }

    // Steps such as System/Provider[@Name='x']/@Guid, from the place on.
    Path ReadSteps(const std::string& from, Condition condition) {
        Path path{from, std::move(condition)};
        do {
            path.place.append(path.place.empty() ? "" : "/").append(Accept("@") ? "@" : "");
            path.place.append(ExpectName());
            if (path.place != "System" && !path.place.starts_with("System/"))
                Fail("only values of System can be asked for");
            path.condition = And(std::move(path.condition), ReadPredicates(path.place));
        } while (Accept("/"));
        return path;
    }

    static Condition Exists(const std::string& place) {
        XPathCondition condition;
        condition.kind = XPathCondition::Kind::kExists;
        condition.field = FindSystemField(place);
        return std::make_shared<XPathCondition>(std::move(condition));
    }

    Condition ReadComparison(const std::string& place, Comparison comparison) {
        CountTest();
        XPathCondition condition;
        condition.field = FindSystemField(place);
        condition.comparison = comparison;
        const XPathToken constant = ExpectConstant();
        const FieldType type = TypeOf(condition.field);
        if (type == FieldType::kNumber || type == FieldType::kTime) {
            condition.kind = XPathCondition::Kind::kCompareNumber;
            condition.whole = ToNumber(constant, type);
        } else {
            condition.kind = XPathCondition::Kind::kCompareText;
            condition.text = std::string(constant.text);
        }
        return std::make_shared<XPathCondition>(std::move(condition));
    }

    // band(Keywords, 4096)
    Condition ReadBand(const std::string& place) {
        CountTest();
        XPathCondition condition;
        condition.kind = XPathCondition::Kind::kBand;
        Skip(2);
        condition.field = FindSystemField(ReadSteps(place, nullptr).place);
        Expect(",");
        condition.whole = ToNumber(ExpectConstant(), FieldType::kNumber);
        Expect(")");
        if (TypeOf(condition.field) != FieldType::kNumber)
            Fail("band() takes a number");
        return std::make_shared<XPathCondition>(std::move(condition));
    }

    // timediff(@SystemTime) <= 86400000, or from one time to another given as the second argument
    Condition ReadAge(const std::string& place) {
        CountTest();
        XPathCondition condition;
        condition.kind = XPathCondition::Kind::kAge;
        Skip(2);
        condition.field = FindSystemField(ReadSteps(place, nullptr).place);
        if (Accept(","))
            condition.until = ToNumber(ExpectConstant(), FieldType::kTime);
        Expect(")");
        if (TypeOf(condition.field) != FieldType::kTime)
            Fail("timediff() takes a time");
        const auto comparison = AcceptComparison();
        if (!comparison)
            Fail("a comparison is expected");
        condition.comparison = *comparison;
        const double sign = Accept("-") ? -1.0 : 1.0;
        condition.number =
            sign * static_cast<double>(ToNumber(ExpectConstant(), FieldType::kNumber));
        return std::make_shared<XPathCondition>(std::move(condition));
    }

    std::uint64_t ToNumber(const XPathToken& constant, FieldType type) const {
        const auto number = type == FieldType::kTime ? ParseEventTime(constant.text)
                                                     : ParseHexOrDecimal(constant.text);
        if (!number)
            throw XPathError(type == FieldType::kTime ? "no time" : "no whole number",
                             constant.offset);
        return *number;
    }

    void CountTest() {
        if (++tests_ > kMostTests)
            Fail("too many tests");
    }

    const XPathToken& Current() const { return tokens_[at_]; }
    const XPathToken& Following() const { return tokens_[std::min(at_ + 1, tokens_.size() - 1)]; }
    void Skip(std::size_t count) { at_ = std::min(at_ + count, tokens_.size() - 1); }

    bool Accept(std::string_view symbol) {
        const bool found = Current().IsSymbol(symbol);
        if (found)
            Skip(1);
        return found;
    }

    bool AcceptName(std::string_view name) {
        const bool found = Current().IsName(name);
        if (found)
            Skip(1);
        return found;
    }

    std::optional<Comparison> AcceptComparison() {
        for (const Operator& candidate : kOperators)
            if (Accept(candidate.symbol))
                return candidate.comparison;
        return std::nullopt;
    }

    void Expect(std::string_view symbol) {
        if (!Accept(symbol))
            Fail(std::string("\"").append(symbol).append("\" is expected"));
    }

    std::string_view ExpectName() {
        const XPathToken token = Current();
        if (token.kind != XPathToken::Kind::kName)
            Fail("a name is expected");
        Skip(1);
        return token.text;
    }

    XPathToken ExpectConstant() {
        const XPathToken token = Current();
        if (token.kind != XPathToken::Kind::kNumber && token.kind != XPathToken::Kind::kLiteral)
            Fail("a number or a text in quotes is expected");
        Skip(1);
        return token;
    }

    [[noreturn]] void Fail(std::string_view reason) const {
        throw XPathError(reason, Current().offset);
    }

    std::vector<XPathToken> tokens_;
    std::size_t at_ = 0;
    std::size_t tests_ = 0;
    std::size_t nesting_ = 0;
};

}  // namespace

XPathConditionPtr ParseXPath(std::string_view query) {
    return Parser(query).ReadQuery();
}

}  // namespace replay
