#include "board/BoardTable.h"

#include "common/RunError.h"
#include "store/Recordset.h"

namespace tallyroom::BoardTable {

namespace {

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

std::vector<Schema::Column> readEmployeeColumns() {
    std::vector<Schema::Column> columns;
    for (const Schema::Column& own : Schema::table(u"Employee").columns) {
        for (const Schema::Column& kept : table().columns) {
            if (std::u16string_view(kept.name) == own.name)
                columns.push_back(kept);
        }
    }
    columns.push_back(Schema::column(table(), u"Qual_Code"));
    return columns;
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
    return Schema::table(u"tlyrTemp");
}

const std::vector<Schema::Column>& employeeColumns() {
    static const std::vector<Schema::Column> columns = readEmployeeColumns();
    return columns;
}

QStringList names() {
    QStringList result;
    for (const Schema::Column& column : employeeColumns())
        result << QString::fromUtf16(column.name);
    for (const MinuteColumn& column : minuteColumns)
        result << QString::fromUtf16(column.name);
    return result;
}

Row values(const BoardRow& row) {
    Row result = row.employee;
    result.reserve(result.size() + std::size(minuteColumns));
    for (const MinuteColumn& column : minuteColumns) {
        const Minutes minutes = row.*column.value;
        result.push_back(minutes ? Variant(*minutes) : Variant::null());
    }
    return result;
}

std::span<const MergedSum> mergedSums() {
    static constexpr std::size_t worked[] = {1, 2};
    static constexpr std::size_t accepted[] = {3, 4};
    static constexpr std::size_t declined[] = {5, 6};
    static constexpr std::size_t all[] = {1, 2, 3, 4, 5, 6};
    static constexpr std::size_t withoutAccepted[] = {1, 2, 5, 6};
    static constexpr MergedSum sums[] = {
        {7, worked}, {8, accepted}, {9, declined}, {10, all}, {11, withoutAccepted}};
    return sums;
}

Totals totals(const Recordset& row) {
    Totals values{};
    for (std::size_t at = 1; at < values.size(); ++at)
        values[at] = row.field(static_cast<int>(at)).toDouble();
    return values;
}

double MergedSum::of(const Totals& totals) const {
    double sum = 0;
    for (const std::size_t summand : summands)
        sum += totals[summand];
    return sum;
}

BoardRow employeeRow(const Recordset& employees) {
    BoardRow row;
    row.employee.reserve(employeeColumns().size());
    for (const Schema::Column& column : employeeColumns())
        row.employee.push_back(
            asKept(employees.field(static_cast<int>(row.employee.size())), column));
    return row;
}

} // namespace tallyroom::BoardTable
