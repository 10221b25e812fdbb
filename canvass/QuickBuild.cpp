#include "canvass/QuickBuild.h"

#include "board/BoardTable.h"
#include "canvass/CanvassStatements.h"
#include "canvass/DerivedColumns.h"
#include "store/Workspace.h"

namespace tallyroom::QuickBuild {

namespace {

std::vector<BoardRow> read(CanvassState& state, const ObjectRef& bucketForm, bool multiply) {
    const auto host = state.hostOptions();
    const Impatience atOnce(host);
    const auto filter = [&bucketForm] {
        return bucketForm.property(QStringLiteral("employeefilter")).toText();
    };
    return BoardRows::read(*host, filter, state.period, multiply);
}

std::vector<Row> valuesOf(const std::vector<BoardRow>& rows) {
    std::vector<Row> values;
    values.reserve(rows.size());
    for (const BoardRow& row : rows)
        values.push_back(BoardTable::values(row));
    return values;
}

void write(CanvassState& state, const std::shared_ptr<Database>& board,
           const std::vector<BoardRow>& rows, bool multiply) {
    Transaction whole(board, TransactionKind::Write);
    board->replaceRows(QString::fromUtf16(BoardTable::table().name), BoardTable::names(),
                       valuesOf(rows));
    const auto canvassRs =
        board->openRecordset(CanvassStatements::allRows(), RecordsetType::Dynaset);
    DerivedColumns::noteCurrent(state, board, multiply);
    whole.commit();
    state.CanvassRs = canvassRs;
}

} // namespace

bool run(CanvassState& state, const ObjectRef& bucketForm, bool multiply) {
    try {
        const auto board = Workspace::openMain(state.DataPath, WhenInUse::Fail);
        const Impatience atOnce(board);
        if (!board->keepsWhatIsWritten(BoardTable::table()))
            return false;
        write(state, board, read(state, bucketForm, multiply), multiply);
        return true;
    } catch (const RunError&) {
        return false; // its statement raises it again
    }
}

} // namespace tallyroom::QuickBuild
