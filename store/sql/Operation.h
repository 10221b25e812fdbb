// What an expression can do, independent of how an engine writes it.
#pragma once

#include <cstddef>

namespace tallyroom::sql {

// A Boolean is a number, −1 or 0, wherever it is a value; conditions are of that type, too.
enum class ValueType { Null, Boolean, Long, Double, Date, Text };

enum class Operation {
    // Conditions: an engine knows whether they hold, and need not be able to keep that as a value.
    And,
    Or,
    Not,
    Equal,
    NotEqual,
    Less,
    LessOrEqual,
    Greater,
    GreaterOrEqual,
    Between,        // the bounds in either order
    BetweenOrdered, // the lower bound comes first
    SameText,       // of two texts, the first a column whose index may serve
    Like,
    IsNull,
    IsNotNull,
    NumberAsCondition, // other than 0
    // Arithmetic and text.
    Add,
    Subtract,
    Multiply,
    Divide,
    Modulo,
    Negate,
    Join,   // as "+" does for texts: Null when either is
    Concat, // as "&" does: Null only when both are
    // Functions.
    If,
    IfNull, // the first, or the second in place of a Null; for numbers
    DayOf,
    Now,
    Today,
    Trim,
    TrimLeft,
    TrimRight,
    UpperCase,
    LowerCase,
    Left,
    Right,
    Middle,
    MiddleToEnd,
    Length,
    Absolute,
    Floor,
    // Over the rows of a group.
    Sum,
    Count,
    CountAll,
    Minimum,
    Maximum,
    FirstText, // by the order of CaseBlind
    LastText,
    FirstSpelling, // of texts that are the same
    Average,
    // Of a group by texts that are the same, one as it is written.
    AnySpelling,
    // Conversions. What does not convert becomes Null.
    ConditionAsNumber, // −1, 0 or Null
    RoundToLong,       // halves to the even number, Null outside 32 bits
    NumberToText,
    DateToText,
    TextToNumber,
    TextToDate,
    DateToSerial,
    SerialToDate,
    FitText, // cut to a number of characters
    // What stands for a text when it is compared, sorted or grouped; not for reading.
    CaseBlind, // as the files' indexes have it: only A to Z have a case
    Collated,  // as TextOrder has it
    AsIndexed, // the quickest by which no two texts are equal that are not the same
};

inline constexpr std::size_t operationCount = static_cast<std::size_t>(Operation::AsIndexed) + 1;

} // namespace tallyroom::sql
