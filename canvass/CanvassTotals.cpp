#include "canvass/CanvassTotals.h"

#include "canvass/BuildSteps.h"
#include "canvass/CanvassStatements.h"
#include "canvass/TotalsMerge.h"

#include <optional>

namespace tallyroom::CanvassTotals {

namespace {

void noteDerived(CanvassState& state, const std::shared_ptr<Database>& database, bool multiply) {
    state.derived = CanvassState::Derived{database, multiply, database->changeMark()};
}

bool isDerived(const CanvassState& state, const std::shared_ptr<Database>& database,
               bool multiply) {
    return state.derived && state.derived->database.lock() == database &&
           state.derived->multiply == multiply && state.derived->mark == database->changeMark();
}

// One run of the build.
class TotalsBuild {
public:
    TotalsBuild(CanvassState& state, const ObjectRef& bucketForm, bool multiply,
                const ErrorQuestion& ask)
        : m_state(state), m_bucketForm(bucketForm), m_multiply(multiply),
          m_steps(state.DataPath, ask) {}

    void run() {
        m_steps.step([this] { openMain(); });
        if (!refill())
            fill();
        std::shared_ptr<Recordset> totals;
        m_steps.step([&] { totals = openTotals(); });
        // Nobody reads the half-filled scratch table.
        m_steps.together(m_main, [&] { finish(mergeAll(totals)); });
        CloseObject(totals);
    }

private:
    void openMain() { m_main = Workspace::openMain(m_state.DataPath); }

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
        m_steps.step(
            [this] { required(m_main).execute(QStringLiteral("Delete * from [tlyrTemp];")); });
        m_steps.step([this] {
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

    // Whether the rows have in them what the finishing updates set.
    bool mergeAll(const std::shared_ptr<Recordset>& totals) {
        bool anyTotals = false;
        m_steps.step([&] { anyTotals = required(totals).rowCount() > 0; });
        if (!anyTotals)
            return false;
        m_steps.step([&] { totals->moveFirst(); });
        return TotalsMerge(m_steps, m_main, allUpdates()).run(*totals);
    }

    QStringList allUpdates() const {
        return CanvassStatements::finish() + CanvassStatements::deriveColumns(m_multiply);
    }

    void finish(bool isFinished) {
        if (!finishAsOne(isFinished)) {
            for (const QString& update : CanvassStatements::finish())
                m_steps.step([&] { required(m_main).execute(update); });
        }
        m_steps.step([this] {
            m_state.CanvassRs = required(m_main).openRecordset(
                QStringLiteral("Select * from [tlyrTemp];"), RecordsetType::Dynaset);
        });
        m_steps.step([this] { applyMultipliers(m_state, m_multiply); });
    }

    // The derived columns come into the one pass over the rows, before CanvassRs is opened; when
    // the merge has met every row, they are in all of them already. They are read by nobody who
    // does not compute them first. What fails here is asked about when it is its statement's turn;
    // what a failing disk has undone with it is done anew before that.
    bool finishAsOne(bool isFinished) {
        if (!m_main || m_steps.isPlain())
            return false;
        try {
            if (isFinished || m_main->executeAsOne(allUpdates())) {
                noteDerived(m_state, m_main, m_multiply);
                return true;
            }
        } catch (const RunError&) {
            // Its statement raises it again.
        }
        m_steps.runPlainly();
        return false;
    }

    CanvassState& m_state;
    const ObjectRef& m_bucketForm;
    bool m_multiply;
    BuildSteps m_steps;
    std::shared_ptr<Database> m_main; // vrlxdb01.mdb; lives on as the owner of CanvassRs
    std::optional<QString> m_filter;  // read, or not to be had, before its statement
    std::optional<RunError> m_filterError;
};

} // namespace

bool build(CanvassState& state, const ObjectRef& bucketForm, bool multiply,
           const ErrorQuestion& ask) {
    try {
        TotalsBuild(state, bucketForm, multiply, ask).run();
        return true;
    } catch (const BuildAborted&) {
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
