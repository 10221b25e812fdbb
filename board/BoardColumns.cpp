#include "board/BoardColumns.h"

#include "common/RunError.h"
#include "store/Recordset.h"

namespace tallyroom::BoardColumns {

namespace {

constexpr const char16_t* tableName = u"tlyrTemp";

struct EmployeeColumn {
    const char16_t* name;
    Variant BoardRow::*value;
};

// In the order of the query of employees.
constexpr EmployeeColumn employeeColumns[] = {
    {u"emp_code", &BoardRow::emp_code},   {u"emp_name", &BoardRow::emp_name},
    {u"sendate", &BoardRow::sendate},     {u"Seniority", &BoardRow::Seniority},
    {u"emp_dept", &BoardRow::emp_dept},   {u"phone", &BoardRow::phone},
    {u"emp_shift", &BoardRow::emp_shift}, {u"defaulttimecalc", &BoardRow::defaulttimecalc},
    {u"Qual_Code", &BoardRow::Qual_Code},
};

struct MinuteColumn {
    const char16_t* name;
    Minutes BoardRow::*value;
};

constexpr MinuteColumn minuteColumns[] = {
    {u"T15Hours", &BoardRow::T15Hours},           {u"T20Hours", &BoardRow::T20Hours},
    {u"xT15Accepted", &BoardRow::xT15Accepted},   {u"xT20Accepted", &BoardRow::xT20Accepted},
    {u"xT15Declined", &BoardRow::xT15Declined},   {u"xT20Declined", &BoardRow::xT20Declined},
    {u"T15Hours_Mult", &BoardRow::T15Hours_Mult}, {u"T20Hours_Mult", &BoardRow::T20Hours_Mult},
    {u"T15Accepted", &BoardRow::T15Accepted},     {u"T20Accepted", &BoardRow::T20Accepted},
    {u"T15Declined", &BoardRow::T15Declined},     {u"T20Declined", &BoardRow::T20Declined},
    {u"WorkedOT", &BoardRow::WorkedOT},           {u"AcceptedOT", &BoardRow::AcceptedOT},
    {u"DeclinedOT", &BoardRow::DeclinedOT},       {u"TotalOT1", &BoardRow::TotalOT1},
    {u"TotalOT2", &BoardRow::TotalOT2},
};

Variant::Type typeOf(Schema::ColumnType type) {
    switch (type) {
    case Schema::ColumnType::Date:
        return Variant::Type::Date;
    case Schema::ColumnType::Double:
        return Variant::Type::Double;
    default:
        return Variant::Type::Text;
    }
}

std::vector<Schema::Column> employeeFormats() {
    std::vector<Schema::Column> formats;
    for (const EmployeeColumn& column : employeeColumns)
        formats.push_back(Schema::column(table(), column.name));
    return formats;
}

// Not to be cut, and read without a byte that was no character.
bool isWhole(const QString& text, int width) {
    return text.size() <= width && !text.contains(QChar(QChar::ReplacementCharacter));
}

// A number counts as one whatever its width.
Variant asKept(const Variant& value, const Schema::Column& column) {
    if (value.isNull())
        return value;
    const Variant::Type wanted = typeOf(column.type);
    if (wanted == Variant::Type::Double && value.isNumber())
        return {value.toDouble()};
    const bool isText = wanted == Variant::Type::Text;
    if (value.type() != wanted || (isText && !isWhole(value.toText(), column.width)))
        throw RunError::make(ErrorNumber::conversionFailed);
    return value;
}

} // namespace

const Schema::Table& table() {
    return Schema::table(tableName);
}

QStringList names() {
    QStringList result;
    for (const EmployeeColumn& column : employeeColumns)
        result << QString::fromUtf16(column.name);
    for (const MinuteColumn& column : minuteColumns)
        result << QString::fromUtf16(column.name);
    return result;
}

Row values(const BoardRow& row) {
    Row result;
    result.reserve(std::size(employeeColumns) + std::size(minuteColumns));
    for (const EmployeeColumn& column : employeeColumns)
        result.push_back(row.*column.value);
    for (const MinuteColumn& column : minuteColumns) {
        const Minutes minutes = row.*column.value;
        result.push_back(minutes ? Variant(*minutes) : Variant::null());
    }
    return result;
}

std::span<const MergedSum> mergedSums() {
    static constexpr int worked[] = {1, 2};
    static constexpr int accepted[] = {3, 4};
    static constexpr int declined[] = {5, 6};
    static constexpr int all[] = {1, 2, 3, 4, 5, 6};
    static constexpr int withoutAccepted[] = {1, 2, 5, 6};
    static constexpr MergedSum sums[] = {
        {7, worked}, {8, accepted}, {9, declined}, {10, all}, {11, withoutAccepted}};
    return sums;
}

double MergedSum::of(const Recordset& totals) const {
    double sum = 0;
    for (const int summand : summands)
        sum += totals.field(summand).toDouble();
    return sum;
}

BoardRow employeeRow(const Recordset& employees) {
    static const std::vector<Schema::Column> formats = employeeFormats();
    BoardRow row;
    for (std::size_t at = 0; at < formats.size(); ++at)
        row.*employeeColumns[at].value = asKept(employees.field(static_cast<int>(at)), formats[at]);
    return row;
}

} // namespace tallyroom::BoardColumns
