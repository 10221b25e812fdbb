#include "canvass/BuildSteps.h"

#include "store/Workspace.h"

#include <utility>

namespace tallyroom {

// False when the write itself has failed and been asked about.
bool BuildSteps::tryWrite(void (BuildSteps::*part)()) {
    try {
        (this->*part)();
        return true;
    } catch (const RunError& error) {
        m_batch.reset();
        m_unbatched = !retryAfter(error) || m_unbatched;
        return false;
    }
}

bool BuildSteps::retryAfter(const RunError& error) {
    if (error.number() == ErrorNumber::tableExists && !m_dropped) {
        dropScratchTable();
        return true;
    }
    undoWorkAhead();
    const bool batched = m_batch.has_value();
    const bool undone = isUndone();
    if (!tryWrite(&BuildSteps::commitBatch))
        throw Undone{};
    const ErrorAnswer answer = m_ask(error);
    if (answer == ErrorAnswer::Abort)
        throw BuildAborted{};
    if (undone) {
        m_unbatched = m_unbatched || answer == ErrorAnswer::Ignore;
        throw Undone{};
    }
    if (batched)
        beginAgain();
    return answer == ErrorAnswer::Retry;
}

void BuildSteps::runPlainly() {
    m_plain = true;
    if (isUndone()) // the steps before must not be missing
        throw Undone{};
    undoWorkAhead();
}

void BuildSteps::undoWorkAhead() {
    if (!m_batch || !std::exchange(m_ahead, false))
        return;
    m_plain = true;
    m_database->undoBatch();
    throw Undone{};
}

// A failure in here is not one of the build's statements: it ends the command with a report.
void BuildSteps::dropScratchTable() {
    Workspace::openAddIn(m_dataPath)->execute(QStringLiteral("Drop Table [tlyrTemp];"));
    m_dropped = true;
}

void BuildSteps::beginBatch() {
    if (m_database && !m_unbatched)
        m_batch.emplace(m_database);
}

// Others may have locked the file while the question was open, which is no statement's failure.
void BuildSteps::beginAgain() {
    try {
        beginBatch();
    } catch (const RunError&) {
        m_unbatched = true;
    }
}

void BuildSteps::commitBatch() {
    if (m_batch)
        m_batch->commit();
    m_batch.reset();
}

} // namespace tallyroom
