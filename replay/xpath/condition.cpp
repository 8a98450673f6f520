#include "replay/xpath/condition.h"

#include "replay/text/event_time.h"

namespace replay::xpath {
namespace {

template <typename Value>
bool Holds(Comparison comparison, const Value& left, const Value& right) {
    switch (comparison) {
        case Comparison::kEqual: return left == right;
        case Comparison::kNotEqual: return left != right;
        case Comparison::kLess: return left < right;
        case Comparison::kLessOrEqual: return left <= right;
        case Comparison::kGreater: return left > right;
        case Comparison::kGreaterOrEqual: return left >= right;
    }
    return false;
}

char FoldAscii(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                                : character;
}

std::string FoldAscii(std::string_view text) {
    std::string folded(text);
    for (char& character : folded) {
        character = FoldAscii(character);
    }
    return folded;
}

bool TextHolds(const Condition& condition, std::string_view value) {
    if (TypeOf(condition.field) == FieldType::kGuid) {
        return Holds(condition.comparison, FoldAscii(value), FoldAscii(condition.text));
    }
    return Holds(condition.comparison, value, std::string_view(condition.text));
}

bool AgeHolds(const Condition& condition, std::uint64_t time) {
    const std::uint64_t until = condition.until != 0 ? condition.until : text::Now();
    const double ticks = static_cast<double>(until) - static_cast<double>(time);
    return Holds(condition.comparison, ticks / text::kTicksPerMillisecond, condition.number);
}

}  // namespace

bool Meets(const Condition& condition, EventView& event) {
    if (condition.kind == Condition::Kind::kAnd) {
        return Meets(*condition.left, event) && Meets(*condition.right, event);
    }
    if (condition.kind == Condition::Kind::kOr) {
        return Meets(*condition.left, event) || Meets(*condition.right, event);
    }

    const FieldValue value = event.Value(condition.field);
    // Every test of an absent value is false, even "!=".
    if (std::holds_alternative<std::monostate>(value)) {
        return false;
    }
    if (condition.kind == Condition::Kind::kExists) {
        return true;
    }
    if (const auto* text = std::get_if<std::string_view>(&value)) {
        return condition.kind == Condition::Kind::kCompareText && TextHolds(condition, *text);
    }
    const std::uint64_t number = std::get<std::uint64_t>(value);
    switch (condition.kind) {
        case Condition::Kind::kCompareNumber:
            return Holds(condition.comparison, number, condition.whole);
        case Condition::Kind::kBand: return (number & condition.whole) != 0;
        case Condition::Kind::kAge: return AgeHolds(condition, number);
        default: return false;
    }
}

}  // namespace replay::xpath
