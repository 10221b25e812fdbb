#include "canvass/ReportDetails.h"

#include "canvass/AnswerRecording.h"
#include "canvass/Offer.h"
#include "common/AnswerKind.h"
#include "common/Counted.h"
#include "common/DateParser.h"
#include "store/Readable.h"

#include <QHash>

namespace tallyroom {

namespace {

QString shown(Date day, const char* picture = "mm/dd/yyyy") {
    return Dates::format(day, QString::fromLatin1(picture));
}

// "7.5" is "7:30": who signs must not have to guess.
QStringList offered(const ReportDetails& details) {
    QStringList amounts;
    const auto add = [&amounts](const QString& amount, Rate rate, bool isNamed) {
        if (AnswerRecording::isValidAmount(amount))
            amounts.append((isNamed ? rateName(rate) + QStringLiteral(": ") : QString()) +
                           Said::amount(amount));
    };
    add(details.amount, Rate::OneAndAHalf, details.breakOut);
    if (details.breakOut)
        add(details.doubleAmount, Rate::Double, true);
    return amounts;
}

QString offerLine(const ReportDetails& details) {
    QStringList parts = offered(details);
    if (const auto day = details.day())
        parts.prepend(QStringLiteral("Canvass date: ") + shown(*day, "ddd mm/dd/yyyy"));
    else if (!parts.isEmpty())
        parts.front().prepend(QStringLiteral("Overtime offered: "));
    return parts.join(Said::gap);
}

QString employeesLine(const ReportDetails& details) {
    const QString count = counted(details.employees, u"employee", u"employees");
    return details.department.isEmpty()
               ? count
               : QStringLiteral("Department: ") + details.department + Said::gap + count;
}

} // namespace

std::optional<Date> ReportDetails::day() const {
    return Dates::parse(canvassDate);
}

QStringList ReportDetails::lines() const {
    QStringList lines;
    lines.append(QStringLiteral("Totalling Period: ") +
                 (period ? QStringLiteral("%1 to %2").arg(shown(period->from), shown(period->to))
                         : QStringLiteral("Indefinite")));
    lines.append(QStringLiteral("Total = ") + total);
    if (multiplied)
        lines.back() += QStringLiteral(" (OT hours multiplied by OT value)");
    lines.append(ordering.isEmpty() ? QString() : QStringLiteral("Order: ") + ordering);
    lines << offerLine(*this) << employeesLine(*this);
    lines.removeAll(QString());
    return lines;
}

QString sharedDepartment(Recordset& rows, const QStringList& codes) {
    QHash<QString, QString> departments;
    for (; !rows.eof(); rows.moveNext())
        departments.insert(Readable::text(rows.field(QStringLiteral("emp_code"))),
                           Readable::text(rows.field(QStringLiteral("emp_dept"))));
    QString first = departments.value(codes.value(0));
    for (const QString& code : codes) {
        if (departments.value(code) != first)
            return {};
    }
    return first;
}

} // namespace tallyroom
