#include "canvass/TotalsBuild.h"

#include "board/BoardStatements.h"
#include "board/BoardTable.h"
#include "canvass/CanvassStatements.h"
#include "canvass/DerivedColumns.h"
#include "store/Workspace.h"

namespace tallyroom {

namespace {

// An answer of Abort leaves the build by this, from whatever depth.
struct Aborted {};

// What a passed-over statement did not open raises 91 in those that use it.
template<class Pointer>
auto& required(const Pointer& pointer) {
    if (!pointer)
        throw RunError::make(ErrorNumber::objectNotSet);
    return *pointer;
}

} // namespace

TotalsBuild::TotalsBuild(CanvassState& state, const ObjectRef& bucketForm, bool multiply,
                         const ErrorQuestion& ask)
    : m_state(state), m_bucketForm(bucketForm), m_multiply(multiply), m_ask(ask) {}

bool TotalsBuild::run() {
    try {
        statement([this] { m_local = Workspace::openMain(m_state.DataPath); });
        statement([this] { local().execute(CanvassStatements::deleteRows()); });
        statement([this] {
            m_state.hostOptions()->execute(
                CanvassStatements::insertEmployees(m_state.DataPath, filter()));
        });
        statement([this] {
            m_totals = m_state.hostOptions()->openRecordset(
                BoardStatements::totals(filter(), m_state.period), RecordsetType::Dynaset);
        });
        if (hasTotals())
            mergeTotals();
        CloseObject(m_totals);
        for (const QString& update : CanvassStatements::finish())
            statement([&] { local().execute(update); });
        statement([this] {
            m_state.CanvassRs =
                local().openRecordset(CanvassStatements::allRows(), RecordsetType::Dynaset);
        });
        statement(
            [this] { DerivedColumns::computeOneByOne(*m_state.rows().database(), m_multiply); });
        return true;
    } catch (const Aborted&) {
        return false;
    }
}

bool TotalsBuild::hasTotals() {
    bool any = false;
    statement([&] { any = totals().rowCount() > 0; });
    return any;
}

// A one-sided merge: the totals advance only on a match, so totals of somebody who is not on the
// board keep all later employees from theirs. That is how the board has always counted.
void TotalsBuild::mergeTotals() {
    statement([this] {
        m_rows = local().openRecordset(CanvassStatements::mergedColumns(), RecordsetType::Dynaset);
    });
    bool atEnd = true;
    statement([&] { atEnd = rows().eof(); });
    while (!atEnd) {
        bool match = false;
        statement([&] { match = rows().field(0).sameValue(totals().field(0)); });
        if (match) {
            takeTotals();
            statement([this] { totals().moveNext(); });
            bool noMore = false;
            statement([&] { noMore = totals().eof(); });
            if (noMore)
                return;
        }
        statement([this] { rows().moveNext(); });
        statement([&] { atEnd = rows().eof(); });
    }
}

void TotalsBuild::takeTotals() {
    constexpr int copied = 6; // positions 1 to 6 of both
    statement([this] { rows().edit(); });
    for (int position = 1; position <= copied; ++position)
        statement([&] { rows().setField(position, totals().field(position)); });
    for (const BoardTable::MergedSum& sum : BoardTable::mergedSums())
        statement([&] { rows().setField(sum.position, sum.of(BoardTable::totals(totals()))); });
    statement([this] { rows().update(); });
}

// Runs one statement of the build, again after Retry.
template<class Action>
void TotalsBuild::statement(const Action& action) {
    for (;;) {
        try {
            return action();
        } catch (const RunError& error) {
            if (!isRetried(error))
                return;
        }
    }
}

bool TotalsBuild::isRetried(const RunError& error) {
    if (error.number() == ErrorNumber::tableExists && !m_dropped) {
        dropScratchTable();
        return true;
    }
    const ErrorAnswer answer = m_ask(error);
    if (answer == ErrorAnswer::Abort)
        throw Aborted{};
    return answer == ErrorAnswer::Retry;
}

// A failure in here is not one of the build's statements: it ends the command with a report.
void TotalsBuild::dropScratchTable() {
    Workspace::openAddIn(m_state.DataPath)->execute(QStringLiteral("Drop Table [tlyrTemp];"));
    m_dropped = true;
}

QString TotalsBuild::filter() const {
    return m_bucketForm.property(QStringLiteral("employeefilter")).toText();
}

Database& TotalsBuild::local() const {
    return required(m_local);
}

Recordset& TotalsBuild::totals() const {
    return required(m_totals);
}

Recordset& TotalsBuild::rows() const {
    return required(m_rows);
}

} // namespace tallyroom
