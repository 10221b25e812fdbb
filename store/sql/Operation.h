// What an expression can do, independent of how an engine writes it.
#pragma once

#include <cstddef>

namespace tallyroom::sql {

enum class ValueType { Null, Boolean, Long, Double, Date, Text };

enum class Operation {
    // Logic; the results are True, False or Null.
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
    Average,
    // Conversions. What does not convert becomes Null.
    Truth,       // anything logical or numeric to −1 or 0
    RoundToLong, // halves to the even number, Null outside 32 bits
    NumberToText,
    DateToText,
    TextToNumber,
    TextToDate,
    DateToSerial,
    SerialToDate,
    FitText,   // cut to a number of characters
    CaseBlind, // the text, compared as the files' indexes have it: only A to Z have a case
    Collated,  // the text, compared and sorted as TextOrder has it
};

inline constexpr std::size_t operationCount = static_cast<std::size_t>(Operation::Collated) + 1;

} // namespace tallyroom::sql
