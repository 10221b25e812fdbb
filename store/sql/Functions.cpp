#include "store/sql/Functions.h"

#include <algorithm>

namespace tallyroom::sql {

using namespace Qt::Literals::StringLiterals;

namespace {

using enum FunctionShape;

constexpr Function functions[] = {
    {"iif"_L1, Operation::If, 3, Choice, ValueType::Null},
    {"isnull"_L1, Operation::IsNull, 1, Unchanged, ValueType::Boolean},
    {"datevalue"_L1, Operation::DayOf, 1, FunctionShape::Date, ValueType::Date},
    {"now"_L1, Operation::Now, 0, Unchanged, ValueType::Date},
    {"date"_L1, Operation::Today, 0, Unchanged, ValueType::Date},
    {"trim"_L1, Operation::Trim, 1, Texts, ValueType::Text},
    {"ltrim"_L1, Operation::TrimLeft, 1, Texts, ValueType::Text},
    {"rtrim"_L1, Operation::TrimRight, 1, Texts, ValueType::Text},
    {"ucase"_L1, Operation::UpperCase, 1, Texts, ValueType::Text},
    {"lcase"_L1, Operation::LowerCase, 1, Texts, ValueType::Text},
    {"left"_L1, Operation::Left, 2, Texts, ValueType::Text},
    {"right"_L1, Operation::Right, 2, Texts, ValueType::Text},
    {"mid"_L1, Operation::Middle, 3, Texts, ValueType::Text},
    {"mid"_L1, Operation::MiddleToEnd, 2, Texts, ValueType::Text},
    {"len"_L1, Operation::Length, 1, Texts, ValueType::Long},
    {"abs"_L1, Operation::Absolute, 1, Numbers, ValueType::Null},
    {"int"_L1, Operation::Floor, 1, Numbers, ValueType::Null},
    {"sum"_L1, Operation::Sum, 1, Numbers, ValueType::Double, true},
    {"avg"_L1, Operation::Average, 1, Numbers, ValueType::Double, true},
    {"count"_L1, Operation::Count, 1, Unchanged, ValueType::Long, true},
    {"count*"_L1, Operation::CountAll, 0, Unchanged, ValueType::Long, true},
    {"min"_L1, Operation::Minimum, 1, OneOfValues, ValueType::Null, true},
    {"max"_L1, Operation::Maximum, 1, OneOfValues, ValueType::Null, true},
};

bool isCalled(const Function& function, const QString& name) {
    return name.compare(function.name, Qt::CaseInsensitive) == 0;
}

} // namespace

bool isFunction(const QString& name) {
    return std::ranges::any_of(functions, [&](const auto& known) { return isCalled(known, name); });
}

const Function* findFunction(const QString& name, std::size_t arguments) {
    const auto* found = std::ranges::find_if(functions, [&](const Function& function) {
        return function.arguments == arguments && isCalled(function, name);
    });
    return found == std::end(functions) ? nullptr : found;
}

} // namespace tallyroom::sql
