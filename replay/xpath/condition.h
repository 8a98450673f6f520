#pragma once

#include "replay/xpath/system_field.h"

#include <cstdint>
#include <memory>
#include <string>

namespace replay::xpath {

enum class Comparison { kEqual, kNotEqual, kLess, kLessOrEqual, kGreater, kGreaterOrEqual };

struct Condition;
using ConditionPtr = std::shared_ptr<const Condition>;  // null: always true

// A condition on one event: a tree of "and" and "or" over tests of single fields.
struct Condition {
    enum class Kind {
        kAnd,
        kOr,
        kExists,         // the field has a value
        kCompareNumber,  // field, comparison, number (times are numbers, too)
        kCompareText,    // field, comparison, text
        kBand,           // field & mask is not 0
        kAge,            // compares the milliseconds from the field's time to `until` with a number
    };

    Kind kind{};
    ConditionPtr left;
    ConditionPtr right;
    SystemField field{};
    Comparison comparison{};
    double number = 0;        // of kAge
    std::uint64_t whole = 0;  // of kCompareNumber and, as the mask, of kBand
    std::uint64_t until = 0;  // of kAge: a FILETIME; 0: now
    std::string text;
};

// Whether the event satisfies the condition.
bool Meets(const Condition& condition, EventView& event);

}  // namespace replay::xpath
