#include "canvass/CanvassColumns.h"

#include "common/Units.h"
#include "store/Readable.h"

#include <cmath>
#include <limits>

namespace tallyroom {

namespace {

struct ColumnRule {
    const char16_t* header;
    const char16_t* field;
    CellKind kind;
    bool shown;
};

bool isZero(const Variant& value) {
    if (value.type() == Variant::Type::Text)
        return parseNumber(value.toText()) == 0.0;
    return value.isNull() || (value.isNumber() && value.toDouble() == 0);
}

// What is no number of minutes shows as a Null does.
Variant readableMinutes(const Variant& value) {
    constexpr double most = std::numeric_limits<std::int32_t>::max();
    return value.isNumber() && std::abs(value.toDouble()) <= most ? value : Readable::number(value);
}

} // namespace

std::vector<CanvassColumn> canvassColumns(const CanvassOptions& o) {
    const bool apart = o.breakOut;
    const ColumnRule rules[] = {
        {u"Code", u"emp_code", CellKind::Text, true},
        {u"Name", u"emp_name", CellKind::Text, true},
        {u"Dept", u"emp_dept", CellKind::Text, o.department},
        {u"Position", u"qual_code", CellKind::Text, o.position},
        {u"Phone", u"phone", CellKind::Phone, true},
        {u"Alt. Phone", u"altphone", CellKind::Phone, o.alternatePhone},
        {u"Cell Phone", u"cellphone", CellKind::Phone, o.cellPhone},
        {u"Pager", u"pager", CellKind::Phone, o.pager},
        {u"Sen. Date", u"sendate", CellKind::Day, o.seniorityDate},
        {u"Sen. #", u"seniority", CellKind::Number, o.seniorityNumber},
        {u"1.5", o.multiply ? u"t15hours_mult" : u"t15hours", CellKind::Time, apart},
        {u"2.0", o.multiply ? u"t20hours_mult" : u"t20hours", CellKind::Time, apart},
        {u"OT Worked", u"workedot", CellKind::Time, !apart},
        {u"1.5 Accepted", u"t15accepted", CellKind::Time, apart},
        {u"2.0 Accepted", u"t20accepted", CellKind::Time, apart},
        {u"1.5 Declined", u"t15declined", CellKind::Time, apart},
        {u"2.0 Declined", u"t20declined", CellKind::Time, apart},
        {u"OT Accepted", u"acceptedot", CellKind::Time, !apart},
        {u"OT Declined", u"declinedot", CellKind::Time, !apart},
        {u"Total", o.totalField(), CellKind::Time, true}};
    std::vector<CanvassColumn> columns;
    for (const ColumnRule& rule : rules) {
        if (rule.shown)
            columns.push_back(
                {QString::fromUtf16(rule.header), QString::fromUtf16(rule.field), rule.kind});
    }
    return columns;
}

QString cellText(const CanvassColumn& column, const Variant& value, bool blankForZero) {
    if (value.type() == Variant::Type::Bytes ||
        (column.isRightAligned() && blankForZero && isZero(value)))
        return {};
    switch (column.kind) {
    case CellKind::Phone:
        return FormatPhone(value.textOrEmpty());
    case CellKind::Day:
        return formatValue(value, QStringLiteral("mm/dd/yyyy"));
    case CellKind::Time:
        return minutesAsTime(readableMinutes(value));
    default:
        return value.textOrEmpty();
    }
}

QString FormatPhone(const QString& s) {
    if (s.trimmed().isEmpty())
        return {};
    const bool separated = s.contains(QLatin1Char('-')) || s.contains(QLatin1Char(' '));
    const qsizetype localLength = s.size() < 9 ? s.size() : separated ? 8 : 7;
    const QString local = s.right(localLength);
    const QString area = s.chopped(localLength);
    QString result;
    if (!area.isEmpty())
        result = QLatin1Char('(') + area + QStringLiteral(") ");
    if (local.size() > 4)
        return result + local.chopped(4) + QLatin1Char('-') + local.right(4);
    return result + local;
}

} // namespace tallyroom
