#include "canvass/CanvassTotals.h"

#include "canvass/CanvassStatements.h"

#include <array>
#include <optional>

namespace tallyroom::CanvassTotals {

namespace {

struct Aborted {};
struct MergeUndone {};

void noteDerived(CanvassState& state, const std::shared_ptr<Database>& database, bool multiply) {
    state.derived = CanvassState::Derived{database, multiply, database->changeMark()};
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
        if (!refill())
            fill();
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

    // The employees take the place of the last board's in one write. The host's filter, or what it
    // raises, is kept for its statement in fill().
    bool refill() {
        if (!m_main || !m_state.HostOptionsDb)
            return false;
        try {
            m_filter = filter();
        } catch (const RunError& error) {
            m_filterError = error;
            return false;
        }
        if (!m_state.HostOptionsDb->refill(
                CanvassStatements::insertEmployees(m_state.DataPath, *m_filter)))
            return false;
        m_filter.reset();
        return true;
    }

    void fill() {
        step([this] { required(m_main).execute(QStringLiteral("Delete * from [tlyrTemp];")); });
        step([this] {
            required(m_state.HostOptionsDb)
                .execute(CanvassStatements::insertEmployees(m_state.DataPath, filter()));
        });
    }

    QString filter() {
        if (const auto error = std::exchange(m_filterError, std::nullopt))
            throw RunError(*error);
        if (const auto known = std::exchange(m_filter, std::nullopt))
            return *known;
        return m_bucketForm.property(QStringLiteral("employeefilter")).toText();
    }

    std::shared_ptr<Recordset> openTotals() {
        return required(m_state.HostOptionsDb)
            .openRecordset(CanvassStatements::totals(filter(), m_state.period),
                           RecordsetType::Dynaset);
    }

    // The merge and what follows share one write to the disk: nobody reads the half-filled scratch
    // table, and the statements of a finished step survive a failing one all the same. When that
    // write itself fails, or the disk in the midst of it, all of it is undone and done again: as
    // before after Retry, each statement with a write of its own after Ignore.
    bool mergeAndFinish(const std::shared_ptr<Recordset>& totals) {
        try {
            m_expecting = m_finished = false;
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
        } catch (const MergeUndone&) {
            m_batch.reset();
            return false;
        } catch (const RunError& error) { // the write itself
            m_batch.reset();
            m_unbatched = !retryAfter(error) || m_unbatched;
            return false;
        }
    }

    // A one-sided merge: the totals advance only on a match, so totals of somebody who is not on
    // the board keep all later employees from theirs. That is how the board has always counted.
    void merge(Recordset& totals) {
        std::shared_ptr<Recordset> rows;
        step([&] { rows = openRows(); });
        if (rows && m_batch && !m_plain) {
            rows->expectUpdates(CanvassStatements::finish() +
                                CanvassStatements::deriveColumns(m_multiply));
            m_expecting = rows->hasLeftExpected();
        }
        const int taken = mergeRows(rows, totals);
        m_finished = rows && taken == rows->rowCount() && rows->hasLeftExpected();
    }

    // How many rows have taken totals.
    int mergeRows(const std::shared_ptr<Recordset>& rows, Recordset& totals) {
        int taken = 0;
        bool atEnd = true;
        step([&] { atEnd = required(rows).eof(); });
        while (!atEnd) {
            bool match = false;
            step([&] { match = rows->field(0).sameValue(totals.field(0)); });
            taken += match ? 1 : 0;
            if (match && !takeTotals(*rows, totals))
                break;
            step([&] { rows->moveNext(); });
            step([&] { atEnd = rows->eof(); });
        }
        return taken;
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
        if (step([&] { raw = rawTotals(totals); }))
            setTotals(row, raw);
        step([&] { row.update(); });
        step([&] { totals.moveNext(); });
        bool atEnd = false;
        step([&] { atEnd = totals.eof(); });
        return !atEnd;
    }

    void setTotals(Recordset& row, const RawTotals& raw) {
        for (int position = 1; position <= rawColumns; ++position)
            step([&] { row.setField(position, raw[static_cast<std::size_t>(position)]); });
        for (const DerivedColumn& column : derivedColumns)
            step([&] { row.setField(column.position, sum(raw, column)); });
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

    void finish() {
        const QStringList updates = CanvassStatements::finish();
        if (!finishAsOne(updates)) {
            for (const QString& update : updates)
                step([&] { required(m_main).execute(update); });
        }
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

    // The derived columns come into the one pass over the rows, before CanvassRs is opened; when
    // the merge has met every row, they are in all of them already. They are read by nobody who
    // does not compute them first. What fails here is asked about when it is its statement's turn;
    // what a failing disk has undone with it is done anew before that.
    bool finishAsOne(const QStringList& updates) {
        if (!m_main || m_plain)
            return false;
        try {
            if (m_finished ||
                m_main->executeAsOne(updates + CanvassStatements::deriveColumns(m_multiply))) {
                noteDerived(m_state, m_main, m_multiply);
                return true;
            }
        } catch (const RunError&) {
            m_plain = true;
            if (m_batch && !m_main->inBatch())
                throw MergeUndone{};
        }
        undoExpecting();
        return false;
    }

    bool retryAfter(const RunError& error) {
        if (error.number() == ErrorNumber::tableExists && !m_dropped) {
            dropScratchTable();
            return true;
        }
        undoExpecting();
        const bool batched = m_batch.has_value();
        const bool undone = batched && !m_main->inBatch();
        commitBatch();
        const ErrorAnswer answer = m_ask(error);
        if (answer == ErrorAnswer::Abort)
            throw Aborted{};
        if (undone) {
            m_unbatched = m_unbatched || answer == ErrorAnswer::Ignore;
            throw MergeUndone{};
        }
        if (batched)
            beginAgain();
        return answer == ErrorAnswer::Retry;
    }

    // No statement's result may be in the rows when one before it is asked about: such a merge is
    // undone and done again plainly, so that all that fails does so in its turn.
    void undoExpecting() {
        if (!m_batch || !std::exchange(m_expecting, false))
            return;
        m_plain = true;
        m_main->undoBatch();
        m_batch.reset();
        throw MergeUndone{};
    }

    // Others may have locked the file while the question was open, which is no statement's failure.
    void beginAgain() {
        try {
            beginBatch();
        } catch (const RunError&) {
            m_unbatched = true;
        }
    }

    // A failure in here is not one of the build's statements: it ends the command with a report.
    void dropScratchTable() {
        Workspace::openDatabase(m_state.DataPath + QStringLiteral("\\aidb01.mdb"))
            ->execute(QStringLiteral("Drop Table [tlyrTemp];"));
        m_dropped = true;
    }

    void beginBatch() {
        if (m_main && !m_unbatched)
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
    std::optional<QString> m_filter; // read, or not to be had, before its statement
    std::optional<RunError> m_filterError;
    bool m_dropped = false;
    bool m_expecting = false; // the merge leaves results of later statements
    bool m_finished = false;  // the merge has left them in every row
    bool m_plain = false;     // no statement does the work of others; set once one has failed
    bool m_unbatched = false; // each statement writes for itself
};

} // namespace

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
    Batch batch(database); // a file that nobody may write now fails in any case
    if (isDerived(state, database, multiply))
        return;
    state.derived.reset();
    qsizetype done = 0;
    database->executeAll(CanvassStatements::deriveColumns(multiply), done);
    // While the batch keeps others from writing; should it be undone, the mark no longer matches.
    noteDerived(state, database, multiply);
    batch.commit();
}

} // namespace tallyroom::CanvassTotals
