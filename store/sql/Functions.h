// The functions that expressions may call.
#pragma once

#include "store/sql/Operation.h"

#include <QString>

namespace tallyroom::sql {

// How a function treats the types of its arguments.
enum class FunctionShape {
    Texts,       // converts the first argument to text and further ones to whole numbers
    Numbers,     // converts its argument to a number
    Date,        // converts its argument to a date
    Unchanged,   // takes it as it is
    Choice,      // IIf
    OneOfValues, // an aggregate that gives back one of the values
};

struct Function {
    QLatin1StringView name; // lower case
    Operation operation;
    std::size_t arguments;
    FunctionShape shape;
    ValueType result; // Null: that of the argument
    bool aggregate = false;
};

// Whether there is one of that name, in any case.
bool isFunction(const QString& name);
// The one that takes that number of arguments, or null.
const Function* findFunction(const QString& name, std::size_t arguments);

} // namespace tallyroom::sql
