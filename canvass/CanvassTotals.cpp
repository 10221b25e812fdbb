#include "canvass/CanvassTotals.h"

#include <array>
#include <optional>

namespace tallyroom::CanvassTotals {

namespace {

struct Aborted {};

void noteDerived(CanvassState& state, const std::shared_ptr<Database>& database, bool multiply) {
    state.derived = CanvassState::Derived{database, multiply, database->changeMark()};
}

// Statements that once gave missing figures a zero. A comparison with NULL is never true, so they
// change no row; the grid shows the missing figures as it always did.
constexpr std::array zeroedColumns = {
    u"T15Hours",    u"T20Hours",     u"T15Accepted",  u"T20Accepted",  u"T15Declined",
    u"T20Declined", u"xT15Accepted", u"xT20Accepted", u"xT15Declined", u"xT20Declined",
    u"WorkedOT",    u"AcceptedOT",   u"DeclinedOT",   u"TotalOT1",     u"TotalOT2"};

QString zeroStatement(const char16_t* column) {
    return QStringLiteral("Update [tlyrTemp] Set [%1] = 0 Where [%1] = NULL;")
        .arg(QString::fromUtf16(column));
}

QStringList finishingUpdates() {
    QStringList updates;
    for (const char16_t* column : zeroedColumns)
        updates.append(zeroStatement(column));
    updates.append(QStringLiteral("Update [tlyrTemp] Set [T15Hours_Mult] = ([T15Hours] * 1.5);"));
    updates.append(QStringLiteral("Update [tlyrTemp] Set [T20Hours_Mult] = ([T20Hours] * 2.0);"));
    return updates;
}

QString employeeInsert(const QString& dataPath, const QString& filter) {
    return QStringLiteral("Insert Into [tlyrTemp] in '") + dataPath +
           QStringLiteral(
               "\\vrlxdb01.mdb' "
               "Select Employee.emp_code, Employee.emp_name, Employee.sendate, "
               "IIf(IsNull([Employee].[Seniority]),0,[Employee].[Seniority]) AS Seniority, "
               "Employee.emp_dept, Employee.phone, Employee.emp_shift, Employee.defaulttimecalc,"
               "(Select [Qual_Code] From [Emp_Qualifications] Where "
               "([Emp_Qualifications].[Emp_Code] = [Employee].[Emp_Code]) and "
               "([Emp_Qualifications].[Default] = TRUE)) AS Qual_Code "
               "FROM Employee Where ([Emp_Code] ") +
           filter + QStringLiteral(");");
}

QString dateClause(const std::optional<TotallingPeriod>& period) {
    if (!period)
        return {};
    return QStringLiteral(" and ([shift_date] between #") + Dates::toText(period->from) +
           QStringLiteral("# and #") + Dates::toText(period->to) + QStringLiteral("#)");
}

template<class Pointer>
auto& required(const Pointer& pointer) {
    if (!pointer)
        throw RunError::make(ErrorNumber::objectNotSet);
    return *pointer;
}

// The columns of a totals row that make up a derived column of tlyrTemp.
struct DerivedColumn {
    int position;
    std::initializer_list<std::size_t> summands;
};

const std::array<DerivedColumn, 5> derivedColumns = {{{7, {1, 2}},              // WorkedOT
                                                      {8, {3, 4}},              // AcceptedOT
                                                      {9, {5, 6}},              // DeclinedOT
                                                      {10, {1, 2, 3, 4, 5, 6}}, // TotalOT1
                                                      {11, {1, 2, 5, 6}}}};     // TotalOT2

QStringList multiplierStatements(bool multiply) {
    const QString f15 = multiply ? QStringLiteral("1.5") : QStringLiteral("1");
    const QString f20 = multiply ? QStringLiteral("2") : QStringLiteral("1");
    const QString s = multiply ? QStringLiteral("_Mult") : QString();
    return {
        QStringLiteral("Update [tlyrTemp] Set [T15Accepted] = ([xT15Accepted] * ") + f15 +
            QStringLiteral(");"),
        QStringLiteral("Update [tlyrTemp] Set [T20Accepted] = ([xT20Accepted] * ") + f20 +
            QStringLiteral(");"),
        QStringLiteral("Update [tlyrTemp] Set [T15Declined] = ([xT15Declined] * ") + f15 +
            QStringLiteral(");"),
        QStringLiteral("Update [tlyrTemp] Set [T20Declined] = ([xT20Declined] * ") + f20 +
            QStringLiteral(");"),
        // No guard against nulls: who has no hours has no worked overtime either.
        QStringLiteral("Update [tlyrTemp] Set [WorkedOT] = ([T15Hours") + s +
            QStringLiteral("] + [T20Hours") + s + QStringLiteral("])"),
        QStringLiteral("Update [tlyrTemp] Set [AcceptedOT] = "
                       "Iif(Isnull([t15Accepted]),0,[t15Accepted]) + "
                       "Iif(Isnull([t20Accepted]),0,[t20accepted]);"),
        QStringLiteral("Update [tlyrTemp] Set [DeclinedOT] = "
                       "iif(isnull([t15Declined]),0,[t15Declined]) + "
                       "iif(isnull([t20Declined]),0,[t20Declined]);"),
        QStringLiteral("Update [tlyrTemp] Set [TotalOT1] = iif(isnull([WorkedOT]),0,[WorkedOT]) + "
                       "iif(isnull([AcceptedOT]),0,[AcceptedOT]) + "
                       "iif(isnull([DeclinedOT]),0,[DeclinedOT]);"),
        QStringLiteral("Update [tlyrTemp] Set [TotalOT2] = iif(isnull([WorkedOT]),0,[WorkedOT])  + "
                       "iif(isnull([DeclinedOT]),0,[DeclinedOT]);")};
}

bool isDerived(const CanvassState& state, const std::shared_ptr<Database>& database,
               bool multiply) {
    return state.derived && state.derived->database.lock() == database &&
           state.derived->multiply == multiply && state.derived->mark == database->changeMark();
}

// The totals that are copied as they are, by their positions in both queries, which begin at 1.
constexpr int rawColumns = 6;
using RawTotals = std::array<Variant, rawColumns + 1>;

// One run of the build. Each statement goes through step(), which knows what to do when it fails.
class TotalsBuild {
public:
    TotalsBuild(CanvassState& state, const ObjectRef& bucketForm, bool multiply,
                const ErrorQuestion& ask)
        : m_state(state), m_bucketForm(bucketForm), m_multiply(multiply), m_ask(ask) {}

    void run() {
        step([this] { openMain(); });
        step([this] { required(m_main).execute(QStringLiteral("Delete * from [tlyrTemp];")); });
        step([this] {
            required(m_state.HostOptionsDb).execute(employeeInsert(m_state.DataPath, filter()));
        });
        std::shared_ptr<Recordset> totals;
        step([&] { totals = openTotals(); });
        while (!mergeAndFinish(totals)) {
        }
        CloseObject(totals);
    }

private:
    void openMain() {
        m_main = Workspace::openDatabase(m_state.DataPath + QStringLiteral("\\vrlxdb01.mdb"));
    }

    QString filter() const {
        return m_bucketForm.property(QStringLiteral("employeefilter")).toText();
    }

    std::shared_ptr<Recordset> openTotals() const {
        return required(m_state.HostOptionsDb)
            .openRecordset(totalsQuery(filter(), m_state.period), RecordsetType::Dynaset);
    }

    // The merge and what follows share one write to the disk: nobody reads the half-filled scratch
    // table, and the statements of a finished step survive a failing one all the same. When that
    // write itself fails all of it is undone, so that a retry does all of it again.
    bool mergeAndFinish(const std::shared_ptr<Recordset>& totals) {
        try {
            beginBatch();
            bool anyTotals = false;
            step([&] { anyTotals = required(totals).rowCount() > 0; });
            if (anyTotals) {
                step([&] { totals->moveFirst(); });
                merge(*totals);
            }
            finish();
            commitBatch();
            return true;
        } catch (const RunError& error) {
            m_batch.reset();
            return !retryAfter(error);
        }
    }

    // A one-sided merge: the totals advance only on a match, so totals of somebody who is not on
    // the board keep all later employees from theirs. That is how the board has always counted.
    void merge(Recordset& totals) {
        std::shared_ptr<Recordset> rows;
        step([&] { rows = openRows(); });
        bool atEnd = true;
        step([&] { atEnd = required(rows).eof(); });
        while (!atEnd) {
            bool match = false;
            step([&] { match = rows->field(0).sameValue(totals.field(0)); });
            if (match && !takeTotals(*rows, totals))
                return;
            step([&] { rows->moveNext(); });
            step([&] { atEnd = rows->eof(); });
        }
    }

    std::shared_ptr<Recordset> openRows() const {
        return required(m_main).openRecordset(
            QStringLiteral(
                "Select [emp_code],[T15Hours],[T20Hours],[xT15Accepted],[xT20Accepted],"
                "[xT15Declined],[xT20Declined],[WorkedOT],[AcceptedOT],[DeclinedOT],[TotalOT1],"
                "[TotalOT2] from [tlyrTemp] order by [emp_code];"),
            RecordsetType::Dynaset);
    }

    // Copies the current totals into the current row. False when those were the last totals.
    bool takeTotals(Recordset& row, Recordset& totals) {
        step([&] { row.edit(); });
        RawTotals raw;
        step([&] { raw = rawTotals(totals); });
        for (int position = 1; position <= rawColumns; ++position)
            step([&] { row.setField(position, raw[static_cast<std::size_t>(position)]); });
        for (const DerivedColumn& column : derivedColumns) {
            step([&] { row.setField(column.position, sum(raw, column)); });
        }
        step([&] { row.update(); });
        step([&] { totals.moveNext(); });
        bool atEnd = false;
        step([&] { atEnd = totals.eof(); });
        return !atEnd;
    }

    static RawTotals rawTotals(const Recordset& totals) {
        RawTotals raw;
        for (int position = 1; position <= rawColumns; ++position)
            raw[static_cast<std::size_t>(position)] = totals.field(position);
        return raw;
    }

    static Variant sum(const RawTotals& raw, const DerivedColumn& column) {
        double minutes = 0;
        for (const std::size_t position : column.summands)
            minutes += raw[position].toDouble();
        return {minutes};
    }

    // The derived columns come into the one pass over the rows, before CanvassRs is opened: they
    // are read by nobody who does not compute them first. What fails the pass would fail the first
    // of its statements likewise, so that this is the one that is passed over.
    void finish() {
        const QStringList updates = finishingUpdates();
        bool whole = false;
        const bool tried = step([&] {
            whole = required(m_main).executeAsOne(updates + multiplierStatements(m_multiply));
            if (whole)
                noteDerived(m_state, m_main, m_multiply);
        });
        if (!whole)
            stepThrough(updates, tried ? 0 : 1);
        step([this] {
            m_state.CanvassRs = required(m_main).openRecordset(
                QStringLiteral("Select * from [tlyrTemp];"), RecordsetType::Dynaset);
        });
        step([this] { applyMultipliers(m_state, m_multiply); });
    }

    // False when the statement failed and was passed over.
    template<class Statement>
    bool step(const Statement& statement) {
        for (;;) {
            try {
                statement();
                return true;
            } catch (const RunError& error) {
                if (!retryAfter(error))
                    return false;
            }
        }
    }

    // Each is a step of its own: one that fails is retried or passed over alone.
    void stepThrough(const QStringList& updates, qsizetype done) {
        while (done < updates.size()) {
            if (!step([&] { required(m_main).executeAll(updates, done); }))
                ++done;
        }
    }

    bool retryAfter(const RunError& error) {
        if (error.number() == ErrorNumber::tableExists && !m_dropped) {
            dropScratchTable();
            return true;
        }
        const bool batched = m_batch.has_value();
        commitBatch();
        const ErrorAnswer answer = m_ask(error);
        if (answer == ErrorAnswer::Abort)
            throw Aborted{};
        if (batched)
            beginBatch();
        return answer == ErrorAnswer::Retry;
    }

    // A failure in here is not one of the build's statements: it ends the command with a report.
    void dropScratchTable() {
        Workspace::openDatabase(m_state.DataPath + QStringLiteral("\\aidb01.mdb"))
            ->execute(QStringLiteral("Drop Table [tlyrTemp];"));
        m_dropped = true;
    }

    void beginBatch() {
        if (m_main)
            m_batch.emplace(m_main);
    }

    void commitBatch() {
        if (m_batch)
            m_batch->commit();
        m_batch.reset();
    }

    CanvassState& m_state;
    const ObjectRef& m_bucketForm;
    bool m_multiply;
    const ErrorQuestion& m_ask;
    std::shared_ptr<Database> m_main; // vrlxdb01.mdb; lives on as the owner of CanvassRs
    std::optional<Batch> m_batch;
    bool m_dropped = false;
};

} // namespace

QString totalsQuery(const QString& filter, const std::optional<TotallingPeriod>& period) {
    return QStringLiteral("select [thist_emp], "
                          "((sum(iif(Isnull([t15]),0,[t15])) * 1440)) as [T15Hours], "
                          "((sum(iif(Isnull([t20]),0,[t20])) * 1440)) as [T20Hours], "
                          "Sum(iif(isnull([tlyrAccepted]),0,[tlyrAccepted])) as [xT15Accepted], "
                          "Sum(iif(isnull([tlyrAccepted2]),0,[tlyrAccepted2])) as [xT20Accepted], "
                          "Sum(iif(isnull([tlyrDeclined]),0,[tlyrDeclined])) as [xT15Declined], "
                          "Sum(iif(isnull([tlyrDeclined2]),0,[tlyrDeclined2])) as [xT20Declined], "
                          "([T15Hours] + [T20Hours]) As [WorkedOT], "
                          "([xT15Accepted] + [xT20Accepted]) As [AcceptedOT], "
                          "([xT15Declined] + [xT20Declined]) As [DeclinedOT], "
                          "([WorkedOT] + [AcceptedOT] + [DeclinedOT]) As [TotalOT1], "
                          "([WorkedOT] + [DeclinedOT]) AS [TotalOT2] "
                          "From [Timehistory] where ([thist_emp] ") +
           filter + QStringLiteral(") and ([thist_record_type] in ('TR','AR','HR'))") +
           dateClause(period) + QStringLiteral(" group by [thist_emp] order by [thist_emp];");
}

bool build(CanvassState& state, const ObjectRef& bucketForm, bool multiply,
           const ErrorQuestion& ask) {
    try {
        TotalsBuild(state, bucketForm, multiply, ask).run();
        return true;
    } catch (const Aborted&) {
        return false;
    }
}

void applyMultipliers(CanvassState& state, bool multiply) {
    const auto database = state.rows().database();
    if (isDerived(state, database, multiply))
        return;
    state.derived.reset();
    Batch batch(database);
    qsizetype done = 0;
    database->executeAll(multiplierStatements(multiply), done);
    // While the batch keeps others from writing; should it be undone, the mark no longer matches.
    noteDerived(state, database, multiply);
    batch.commit();
}

} // namespace tallyroom::CanvassTotals
