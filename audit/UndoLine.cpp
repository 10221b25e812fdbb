#include "audit/UndoLine.h"

#include "common/RunError.h"
#include "common/Units.h"
#include "store/SqlText.h"

namespace tallyroom {

namespace {

// Positions count from 0 here.
constexpr int codeAt = 0;
constexpr int codeWidth = 9;
constexpr int dateAt = 12;
constexpr int dateWidth = 10;
constexpr int actionAt = 25;
constexpr int rateAt = 34; // its first figure

const QString gap = QStringLiteral("   ");

} // namespace

QString UndoLine::text() const {
    QString line =
        formatValue(Variant(code), QStringLiteral("!@@@@@@@@@")).leftJustified(codeWidth);
    const QString day = date ? Dates::format(*date, QStringLiteral("mm/dd/yyyy")) : QString();
    line += gap + day.leftJustified(dateWidth) + gap;
    line += declined ? QStringLiteral("Declined") : QStringLiteral("Accepted");
    if (breakOut)
        line += isDouble ? QStringLiteral(" 2.0") : QStringLiteral(" 1.5");
    return line + gap + (minutes ? TimeConversion::toTimeText(*minutes) : QString());
}

UndoLine UndoLine::fromText(const QString& text, bool breakOut) {
    UndoLine line;
    line.code = text.mid(codeAt, codeWidth).trimmed();
    line.date = Variant(text.mid(dateAt, dateWidth)).toDate();
    line.declined = text.mid(actionAt, 1) != QLatin1String("A");
    line.breakOut = breakOut;
    line.isDouble = breakOut && text.mid(rateAt, 1) == QLatin1String("2");
    const QString time = text.mid(text.lastIndexOf(QLatin1Char(' ')) + 1);
    if (time.isEmpty()) // would read as no minutes, which others may have
        throw RunError::make(ErrorNumber::typeMismatch);
    line.minutes = TimeConversion::toMinutes(time);
    return line;
}

QString UndoLine::criterion() const {
    QString result = QStringLiteral("([emp_code] = ") + SqlText::criterion(code) +
                     QStringLiteral(") and ([date] = ") + SqlText::literal(date.value()) +
                     QStringLiteral(") and ([ot] = ") + QString::number(minutes.value()) +
                     QStringLiteral(") and ([action] = ") +
                     (declined ? QStringLiteral("1") : QStringLiteral("0")) + QLatin1Char(')');
    if (breakOut)
        result += QStringLiteral(" and ([tHistField] = '") +
                  (declined ? QStringLiteral("tlyrDeclined") : QStringLiteral("tlyrAccepted")) +
                  (isDouble ? QStringLiteral("2") : QString()) + QStringLiteral("')");
    return result;
}

} // namespace tallyroom
