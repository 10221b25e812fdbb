#include "reports/WeeklyTotals.h"

#include "audit/EmployeeKey.h"
#include "audit/Moments.h"
#include "common/AnswerKind.h"
#include "store/Readable.h"
#include "store/SqlText.h"

namespace tallyroom {

namespace {

QString zeroForNull(const QString& column) {
    return QStringLiteral("IIf(IsNull([%1]),0,[%1])").arg(column);
}

QString statement(const QString& filter, QDate first, QDate last) {
    QStringList answers;
    for (const AnswerKind& kind : answerKinds)
        answers << zeroForNull(QString::fromUtf16(kind.history));
    const QString week = QStringLiteral("Int(([shift_date] - %1) / 7)")
                             .arg(SqlText::literal(Dates::fromQDate(first)));
    return QStringLiteral("Select [thist_emp], %1 as [week], Sum((%2 + %3) * 1440 + %4) from "
                          "[TimeHistory] where ([thist_emp] %5) and ([thist_record_type] in "
                          "('TR','AR','HR')) and %6 group by [thist_emp], %1;")
        .arg(week, zeroForNull(QStringLiteral("t15")), zeroForNull(QStringLiteral("t20")),
             answers.join(QStringLiteral(" + ")), filter,
             Moments::within(QStringLiteral("shift_date"), first, last));
}

std::vector<WeeklyTotals> emptyWeeks(QDate first, int weeks, qsizetype employees) {
    std::vector<WeeklyTotals> result;
    for (QDate day = first; weeks > 0; --weeks, day = day.addDays(7))
        result.push_back(
            {{day, day.addDays(6)}, std::vector<double>(static_cast<std::size_t>(employees))});
    return result;
}

QHash<QString, std::size_t> placesOf(const QStringList& codes) {
    QHash<QString, std::size_t> places;
    places.reserve(codes.size());
    for (const QString& code : codes)
        places.insert(employeeKey(code), static_cast<std::size_t>(places.size()));
    return places;
}

} // namespace

std::vector<WeeklyTotals> weeklyTotals(Database& host, const QString& filter,
                                       const QStringList& codes, QDate day, int weeks) {
    const QDate first = day.addDays(-7 * weeks);
    std::vector<WeeklyTotals> result = emptyWeeks(first, weeks, codes.size());
    const QHash<QString, std::size_t> places = placesOf(codes);
    const auto rows =
        host.openRecordset(statement(filter, first, day.addDays(-1)), RecordsetType::Snapshot);
    for (; !rows->eof(); rows->moveNext()) {
        const auto place = places.constFind(employeeKey(Readable::text(rows->field(0))));
        const auto week = static_cast<std::size_t>(rows->field(1).toLong());
        if (place != places.constEnd() && week < result.size())
            result[week].minutes[*place] += rows->field(2).toDouble();
    }
    return result;
}

} // namespace tallyroom
