// The statements of the totals build: what happens when one fails, and the write that they share.
#pragma once

#include "canvass/CanvassTotals.h"
#include "store/Database.h"

#include <memory>
#include <optional>

namespace tallyroom {

// An answer of Abort leaves the build by this.
struct BuildAborted {};

// What a passed-over statement did not open raises 91 in those that use it.
template<class Pointer>
auto& required(const Pointer& pointer) {
    if (!pointer)
        throw RunError::make(ErrorNumber::objectNotSet);
    return *pointer;
}

class BuildSteps {
public:
    // `dataPath` is the host's data folder. `ask` must outlive this.
    BuildSteps(QString dataPath, const ErrorQuestion& ask)
        : m_dataPath(std::move(dataPath)), m_ask(ask) {}

    // Runs one statement of the build, again after Retry. False when it failed and was passed over.
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

    // The steps of `work` share one write to the disk; the statements of a finished step survive a
    // failing one all the same. When that write itself fails, or the disk in the midst of it, all
    // of it is undone and `work` is done again: as before after Retry, each statement with a write
    // of its own after Ignore. Without a database the steps run all the same.
    template<class Work>
    void together(const std::shared_ptr<Database>& database, const Work& work) {
        m_database = database;
        while (!attempt(work)) {
        }
        m_database.reset();
    }

    // Within together(): whether a statement may do the work of later ones as well. Once one has
    // failed none does, so that all that fails does so in its turn.
    bool mayWorkAhead() const { return m_batch && !m_plain; }
    bool isPlain() const { return m_plain; }
    // Results of later statements are in the rows from now on. Before anything is asked they are
    // undone: `work` is left, and done again plainly.
    void workedAhead() { m_ahead = true; }
    // What should have done the work of several statements has failed, or cannot: they run one by
    // one. Leaves `work` when it has to be done again.
    void runPlainly();

private:
    struct Undone {};

    template<class Work>
    bool attempt(const Work& work) {
        m_ahead = false;
        if (!tryWrite(&BuildSteps::beginBatch))
            return false;
        try {
            work();
        } catch (const Undone&) {
            m_batch.reset();
            return false;
        }
        return tryWrite(&BuildSteps::commitBatch);
    }

    bool tryWrite(void (BuildSteps::*part)());
    bool retryAfter(const RunError& error);
    bool isUndone() const { return m_batch && !m_database->inBatch(); }
    void undoWorkAhead();
    void dropScratchTable();
    void beginBatch();
    void beginAgain();
    void commitBatch();

    QString m_dataPath;
    const ErrorQuestion& m_ask;
    std::shared_ptr<Database> m_database;
    std::optional<Batch> m_batch;
    bool m_dropped = false;   // the scratch table, which happens once in a build
    bool m_ahead = false;     // results of later statements are in the rows
    bool m_plain = false;     // no statement does the work of others
    bool m_unbatched = false; // each statement writes for itself
};

} // namespace tallyroom
