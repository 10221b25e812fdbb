#include "audit/UndoLine.h"

#include "common/Format.h"
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
    line += actionName(action);
    if (rate)
        line += QLatin1Char(' ') + rateName(*rate);
    return line + gap + (minutes ? TimeConversion::toTimeText(*minutes) : QString());
}

QString UndoLine::codeIn(const QString& text) {
    return text.mid(codeAt, codeWidth).trimmed();
}

UndoLine UndoLine::fromText(const QString& text, bool breakOut) {
    UndoLine line;
    line.code = codeIn(text);
    line.date = Variant(text.mid(dateAt, dateWidth)).toDate();
    if (text.mid(actionAt, 1) != QLatin1String("A"))
        line.action = AuditAction::Declined;
    if (breakOut)
        line.rate = text.mid(rateAt, 1) == QLatin1String("2") ? Rate::Double : Rate::OneAndAHalf;
    const QString time = text.mid(text.lastIndexOf(QLatin1Char(' ')) + 1);
    if (time.isEmpty()) // would read as no minutes, which others may have
        throw RunError::make(ErrorNumber::typeMismatch);
    line.minutes = TimeConversion::toMinutes(time);
    return line;
}

QString UndoLine::criterion() const {
    Q_ASSERT(date && minutes);
    QString result = QStringLiteral("([emp_code] = ") + SqlText::criterion(code) +
                     QStringLiteral(") and ([date] = ") + SqlText::literal(date.value()) +
                     QStringLiteral(") and ([ot] = ") + QString::number(minutes.value()) +
                     QStringLiteral(") and ([action] = ") +
                     QString::number(static_cast<int>(action)) + QLatin1Char(')');
    if (rate)
        result += QStringLiteral(" and ([tHistField] = '") +
                  QString::fromUtf16(answerKind(action, *rate).history) + QStringLiteral("')");
    return result;
}

} // namespace tallyroom
