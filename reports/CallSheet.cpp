#include "reports/CallSheet.h"

#include "audit/AnswersOfDay.h"
#include "board/BoardTable.h"
#include "board/CellText.h"
#include "common/DateParser.h"
#include "common/TextOrder.h"
#include "common/Units.h"
#include "reports/Absences.h"
#include "reports/Group.h"
#include "reports/Ordered.h"
#include "store/Readable.h"
#include "store/Workspace.h"

namespace tallyroom {

namespace {

// In millimetres.
constexpr double tick = 9;
constexpr double note = 16;

using Texts = QHash<QString, QString>; // by employee code

// Also "8", which is no amount of an answer.
std::int32_t minutesOf(const QString& hours) {
    bool isWhole = false;
    const int whole = hours.toInt(&isWhole);
    if (isWhole && whole > 0 && whole <= 24)
        return whole * 60;
    try {
        const std::int32_t minutes = IsTime(hours) ? TimeConversion::toMinutes(hours) : 0;
        if (minutes > 0 && minutes <= 24 * 60)
            return minutes;
    } catch (const RunError&) { // the form of a time, and yet none
    }
    throw BadRequest{QStringLiteral("\"%1\" is no amount from 0:01 to 24:00 hours.").arg(hours)};
}

QTime startOf(const QString& typed) {
    const QTime start = QTime::fromString(typed, QStringLiteral("H:mm"));
    if (!start.isValid())
        throw BadRequest{QStringLiteral("\"%1\" is no time like 15:30.").arg(typed)};
    return start;
}

// ", 15:00 to 23:00", ", from 15:00", ", 8:00 hours".
QString hoursText(const ReportRequest& request) {
    const QString format = QStringLiteral("HH:mm");
    if (request.start.isEmpty() && request.hours.isEmpty())
        return {};
    if (request.start.isEmpty())
        return QStringLiteral(", %1 hours")
            .arg(TimeConversion::toShortText(minutesOf(request.hours)));
    const QTime start = startOf(request.start);
    if (request.hours.isEmpty())
        return QStringLiteral(", from %1").arg(start.toString(format));
    const QTime end = start.addSecs(60 * minutesOf(request.hours));
    return QStringLiteral(", %1 to %2%3")
        .arg(start.toString(format), end.toString(format),
             end <= start ? QStringLiteral(" the next day") : QString());
}

QString dayText(const ReportRequest& request) {
    if (!request.date.isValid())
        throw BadRequest{QStringLiteral("A call sheet is for a day: which?")};
    return QStringLiteral("Overtime on %1 %2%3")
        .arg(request.date.toString(QStringLiteral("dddd")), shownDay(request.date),
             hoursText(request));
}

// The shift that each is to work that day, or has worked.
Texts readOtherWork(Database& host, const QString& filter, QDate day) {
    Texts work = readPairs(
        host, QStringLiteral("Select [sched_emp], [sched_shift] from [Schedule] where ([sched_emp] "
                             "%1) and %2;")
                  .arg(filter, dayCondition(QStringLiteral("sched_date"), day)));
    work.insert(
        readPairs(host, QStringLiteral("Select [thist_emp], [thist_shift] from [TimeHistory] where "
                                       "([thist_emp] %1) and ([thist_record_type] = 'TR') and %2;")
                            .arg(filter, dayCondition(QStringLiteral("shift_date"), day))));
    return work;
}

ValueTable emptySheet() {
    return {{},
            {{QStringLiteral("No."), ValueKind::Number},
             {QStringLiteral("Code")},
             {QStringLiteral("Name"), ValueKind::Text, true},
             {QStringLiteral("Dept")},
             {QStringLiteral("Phone")},
             {QStringLiteral("Total"), ValueKind::Minutes},
             {QStringLiteral("Known of that day"), ValueKind::Text, true},
             {QStringLiteral("Accept"), ValueKind::Text, false, tick, true},
             {QStringLiteral("Decline"), ValueKind::Text, false, tick, true},
             {QStringLiteral("No answer"), ValueKind::Text, false, tick, true},
             {QStringLiteral("Not avail."), ValueKind::Text, false, tick, true},
             {QStringLiteral("Time"), ValueKind::Text, false, note},
             {QStringLiteral("Initials"), ValueKind::Text, false, note}},
            {}};
}

class SheetWriter {
public:
    SheetWriter(const QString& dataFolder, const ReportRequest& request)
        : m_dataFolder(dataFolder), m_request(request),
          m_host(Workspace::openHostOptions(dataFolder)), m_data(readHostData(*m_host)),
          m_period(request.period ? request.period : canvassPeriod(dataFolder)),
          m_filter(groupFilter(request.group)) {}

    Report write(const ReportProgress& progress) {
        constexpr int steps = 3;
        m_report.title = QStringLiteral("Call Sheet");
        m_report.details << dayText(m_request) << groupDetails(m_request.group, m_data);
        requireNotCancelled(progress, 0, steps);
        std::vector<BoardRow> rows = readRows();
        requireNotCancelled(progress, 1, steps);
        sort(rows);
        readDay();
        requireNotCancelled(progress, 2, steps);
        m_report.tables.push_back(emptySheet());
        for (const BoardRow& row : rows)
            add(row);
        addNotes();
        return std::move(m_report);
    }

private:
    std::vector<BoardRow> readRows() {
        std::optional<TotallingPeriod> totalled; // as the board's: without one, all dates
        if (m_period)
            totalled = {Dates::fromQDate(m_period->from), Dates::fromQDate(m_period->to)};
        m_report.details << (m_period ? QStringLiteral("Totals of %1 to %2")
                                            .arg(shownDay(m_period->from), shownDay(m_period->to))
                                      : QStringLiteral("Totals of all dates"));
        return BoardRows::read(
            *m_host, [this] { return m_filter; }, totalled, false);
    }

    void sort(std::vector<BoardRow>& rows) {
        if (m_request.order.isEmpty())
            return;
        sortBy(rows, m_dataFolder, m_request.order);
        m_report.details << QStringLiteral("Order: %1").arg(m_request.order);
    }

    void readDay() {
        m_absences = absencesOn(*m_host, m_filter, m_request.date);
        m_work = readOtherWork(*m_host, m_filter, m_request.date);
        if (!m_asked.read(m_dataFolder, Dates::fromQDate(m_request.date)))
            m_report.notes << QStringLiteral("Who has been asked already could not be read.");
    }

    void add(const BoardRow& row) {
        const QString code = row.code().textOrEmpty();
        const auto absence = m_absences.constFind(TextOrder::folded(code));
        if (absence != m_absences.constEnd()) {
            m_absent << QStringLiteral("%1 %2 (%3)").arg(code, text(row, u"emp_name"), *absence);
            return;
        }
        std::vector<Row>& lines = m_report.tables.front().rows;
        Row line{static_cast<std::int32_t>(lines.size() + 1),
                 code,
                 text(row, u"emp_name"),
                 text(row, u"emp_dept"),
                 phones(row),
                 row.TotalOT1 ? Variant(*row.TotalOT1) : Variant::null(),
                 knownOf(code)};
        line.resize(m_report.tables.front().columns.size(), Variant::null());
        lines.push_back(std::move(line));
    }

    static QString text(const BoardRow& row, std::u16string_view column) {
        const auto& columns = BoardTable::employeeColumns();
        const auto found = std::ranges::find_if(
            columns, [&](const Schema::Column& known) { return column == known.name; });
        return row.employee[static_cast<std::size_t>(found - columns.begin())].textOrEmpty();
    }

    static QString phones(const BoardRow& row) {
        const auto& columns = BoardTable::employeeColumns();
        QStringList numbers;
        for (const BoardColumn& column : BoardColumns::all()) {
            const auto held = std::ranges::find_if(columns, [&](const Schema::Column& known) {
                return column.kind == CellKind::Phone &&
                       std::u16string_view(column.field) == known.name;
            });
            if (held != columns.end())
                numbers << FormatPhone(
                    row.employee[static_cast<std::size_t>(held - columns.begin())].textOrEmpty());
        }
        numbers.removeAll(QString());
        return numbers.join(QStringLiteral(" / "));
    }

    QString knownOf(const QString& code) const {
        QStringList known = m_asked.noteOf(code).split(u'\n', Qt::SkipEmptyParts);
        if (const auto shift = m_work.constFind(TextOrder::folded(code));
            shift != m_work.constEnd())
            known << QStringLiteral("works shift %1").arg(*shift);
        return known.join(QStringLiteral("; "));
    }

    void addNotes() {
        if (m_report.tables.front().rows.empty())
            m_report.notes << QStringLiteral("Nobody can be called: the sheet is empty.");
        if (!m_absent.isEmpty())
            m_report.notes << QStringLiteral("Left out, absent that day: %1.")
                                  .arg(m_absent.join(QStringLiteral(", ")));
    }

    const QString& m_dataFolder;
    const ReportRequest& m_request;
    std::shared_ptr<Database> m_host; // bcx.mdb
    HostData m_data;
    std::optional<Period> m_period;
    QString m_filter;
    Texts m_absences; // reasons
    Texts m_work;     // shifts
    AnswersOfDay m_asked;
    QStringList m_absent; // who is left out
    Report m_report;
};

} // namespace

Report callSheet(const QString& dataFolder, const ReportRequest& request,
                 const ReportProgress& progress) {
    dayText(request); // before anything is read
    return SheetWriter(dataFolder, request).write(progress);
}

} // namespace tallyroom
