#include "canvass/DerivedColumns.h"

#include "board/BoardTable.h"
#include "common/AnswerKind.h"

namespace tallyroom::DerivedColumns {

namespace {

constexpr qsizetype workedOT = std::size(answerKinds);

QString weighed(const AnswerKind& kind, bool multiply) {
    return QStringLiteral("[%1] = ([%2] * %3)")
        .arg(QString::fromUtf16(kind.weighed()), QString::fromUtf16(kind.board),
             QString::number(multiply ? factorOf(kind.rate) : 1));
}

// In the order in which they are computed.
QStringList assignments(bool multiply) {
    QStringList all;
    for (const AnswerKind& kind : answerKinds)
        all.append(weighed(kind, multiply));
    const QString s = multiply ? QStringLiteral("_Mult") : QString();
    // No guard against nulls: who has no hours has no worked overtime either.
    all.append(QStringLiteral("[WorkedOT] = ([T15Hours%1] + [T20Hours%1])").arg(s));
    all.append({QStringLiteral("[AcceptedOT] = Iif(Isnull([t15Accepted]),0,[t15Accepted]) + "
                               "Iif(Isnull([t20Accepted]),0,[t20accepted])"),
                QStringLiteral("[DeclinedOT] = iif(isnull([t15Declined]),0,[t15Declined]) + "
                               "iif(isnull([t20Declined]),0,[t20Declined])"),
                QStringLiteral("[TotalOT1] = iif(isnull([WorkedOT]),0,[WorkedOT]) + "
                               "iif(isnull([AcceptedOT]),0,[AcceptedOT]) + "
                               "iif(isnull([DeclinedOT]),0,[DeclinedOT])"),
                QStringLiteral("[TotalOT2] = iif(isnull([WorkedOT]),0,[WorkedOT])  + "
                               "iif(isnull([DeclinedOT]),0,[DeclinedOT])")});
    return all;
}

QString update(const QString& assigned) {
    return QStringLiteral("Update [tlyrTemp] Set ") + assigned;
}

// No assignment of a group reads a column that another one of the group sets.
QStringList groupedAssignments(bool multiply) {
    const QStringList all = assignments(multiply);
    const QString comma = QStringLiteral(", ");
    return {all.sliced(0, 5).join(comma), all.sliced(5, 2).join(comma),
            all.sliced(7, 2).join(comma)};
}

// Only in a table where no rule could refuse one value of a group and take another.
bool computeGrouped(Database& board, bool multiply, const QString& condition,
                    QStringList updates = {}) {
    if (!board.keepsWhatIsWritten(BoardTable::table()))
        return false;
    for (const QString& group : groupedAssignments(multiply))
        updates << update(group) + condition + QLatin1Char(';');
    board.executeAll(updates);
    return true;
}

bool computeAtOnce(CanvassState& state, bool multiply) {
    const auto board = state.rows().database();
    const Impatience atOnce(board);
    try {
        Transaction write(board, TransactionKind::Write);
        if (!computeGrouped(*board, multiply, {}))
            return false;
        noteCurrent(state, board, multiply);
        write.commit();
        return true;
    } catch (const RunError&) {
        state.derived.reset();
        return false; // its statement raises it again
    }
}

} // namespace

void computeOneByOne(Database& board, bool multiply) {
    const QStringList all = assignments(multiply);
    for (qsizetype at = 0; at < all.size(); ++at)
        board.execute(update(all[at]) + (at == workedOT ? QString() : QStringLiteral(";")));
}

void compute(CanvassState& state, bool multiply) {
    if (!areCurrent(state, multiply) && !computeAtOnce(state, multiply))
        computeOneByOne(*state.rows().database(), multiply);
}

bool computeFor(Database& board, bool multiply, const QString& change, const QString& employee) {
    Q_ASSERT(board.inTransaction());
    try {
        return computeGrouped(board, multiply,
                              QStringLiteral(" Where ([Emp_Code] = ") + employee + QLatin1Char(')'),
                              {change});
    } catch (const RunError&) {
        if (!board.inTransaction()) // the disk has undone it all
            throw;
        return false; // its statement raises it again
    }
}

bool areCurrent(const CanvassState& state, bool multiply) {
    const auto board = state.rows().database();
    return state.derived && state.derived->database.lock() == board &&
           state.derived->multiply == multiply && state.derived->mark == board->changeMark();
}

void noteCurrent(CanvassState& state, const std::shared_ptr<Database>& board, bool multiply) {
    Q_ASSERT(board->inTransaction());
    state.derived = CanvassState::Derived{board, multiply, board->changeMark()};
}

} // namespace tallyroom::DerivedColumns
