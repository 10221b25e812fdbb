// Computing the board statement by statement: the reference for what a build leaves.
#pragma once

#include "canvass/CanvassTotals.h"

namespace tallyroom {

// Each statement stands on its own and is asked about when it fails.
class TotalsBuild {
public:
    // All must outlive this.
    TotalsBuild(CanvassState& state, const ObjectRef& bucketForm, bool multiply,
                const ErrorQuestion& ask);

    [[nodiscard]] bool run(); // false after an abort

private:
    template<class Action>
    void statement(const Action& action);
    bool isRetried(const RunError& error);
    void dropScratchTable();

    QString filter() const;
    Database& local() const;
    Recordset& totals() const;
    Recordset& rows() const;
    bool hasTotals();
    void mergeTotals();
    void takeTotals();

    CanvassState& m_state;
    const ObjectRef& m_bucketForm;
    bool m_multiply;
    const ErrorQuestion& m_ask;
    std::shared_ptr<Database> m_local;   // vrlxdb01.mdb; lives on as the owner of CanvassRs
    std::shared_ptr<Recordset> m_totals; // of the history, by employee
    std::shared_ptr<Recordset> m_rows;   // of tlyrTemp, by employee
    bool m_dropped = false;              // the scratch table, which happens once in a run
};

} // namespace tallyroom
