#include "store/sql/Functions.h"

namespace tallyroom::sql {

namespace {

constexpr QLatin1StringView operator""_n(const char* text, std::size_t size) {
    return QLatin1StringView(text, static_cast<qsizetype>(size));
}

using enum FunctionShape;

constexpr Function functions[] = {
    {"iif"_n, Operation::If, 3, Choice, ValueType::Null},
    {"isnull"_n, Operation::IsNull, 1, Plain, ValueType::Boolean},
    {"datevalue"_n, Operation::DayOf, 1, FunctionShape::Date, ValueType::Date},
    {"now"_n, Operation::Now, 0, Plain, ValueType::Date},
    {"date"_n, Operation::Today, 0, Plain, ValueType::Date},
    {"trim"_n, Operation::Trim, 1, Texts, ValueType::Text},
    {"ltrim"_n, Operation::TrimLeft, 1, Texts, ValueType::Text},
    {"rtrim"_n, Operation::TrimRight, 1, Texts, ValueType::Text},
    {"ucase"_n, Operation::UpperCase, 1, Texts, ValueType::Text},
    {"lcase"_n, Operation::LowerCase, 1, Texts, ValueType::Text},
    {"left"_n, Operation::Left, 2, Texts, ValueType::Text},
    {"right"_n, Operation::Right, 2, Texts, ValueType::Text},
    {"mid"_n, Operation::Middle, 3, Texts, ValueType::Text},
    {"mid"_n, Operation::MiddleToEnd, 2, Texts, ValueType::Text},
    {"len"_n, Operation::Length, 1, Texts, ValueType::Long},
    {"abs"_n, Operation::Absolute, 1, Numbers, ValueType::Null},
    {"int"_n, Operation::Floor, 1, Numbers, ValueType::Null},
    {"sum"_n, Operation::Sum, 1, Numbers, ValueType::Double, true},
    {"avg"_n, Operation::Average, 1, Numbers, ValueType::Double, true},
    {"count"_n, Operation::Count, 1, Plain, ValueType::Long, true},
    {"count*"_n, Operation::CountAll, 0, Plain, ValueType::Long, true},
    {"min"_n, Operation::Minimum, 1, OneOfValues, ValueType::Null, true},
    {"max"_n, Operation::Maximum, 1, OneOfValues, ValueType::Null, true},
};

} // namespace

const Function* findFunction(const QString& name, int arguments, bool& known) {
    known = false;
    for (const Function& function : functions) {
        if (name.compare(function.name, Qt::CaseInsensitive) != 0)
            continue;
        known = true;
        if (function.arguments == arguments)
            return &function;
    }
    return nullptr;
}

} // namespace tallyroom::sql
