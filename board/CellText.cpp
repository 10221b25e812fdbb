#include "board/CellText.h"

#include "common/Format.h"
#include "common/Units.h"
#include "store/Readable.h"

#include <cmath>
#include <limits>

namespace tallyroom {

namespace {

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

QString cellText(CellKind kind, const Variant& value, bool blankForZero) {
    const bool counts = kind == CellKind::Number || kind == CellKind::Time;
    if (value.type() == Variant::Type::Bytes || (counts && blankForZero && isZero(value)))
        return {};
    switch (kind) {
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
