#include "canvass/AnswerRecording.h"

#include "audit/DeskNews.h"
#include "canvass/AnswerStatements.h"
#include "canvass/DerivedColumns.h"
#include "canvass/StandingNotes.h"
#include "common/Units.h"
#include "store/SqlText.h"
#include "store/Workspace.h"

#include <map>

namespace tallyroom::AnswerRecording {

namespace {

// One command's recording. CanvassRs stands on the employee whose answer is being written.
class Recorder {
public:
    Recorder(CanvassState& state, const AnswerRequest& request, const Progress& progress)
        : m_state(state), m_request(request), m_progress(progress), m_standing(request.board) {}

    Result run() {
        m_result.employees = static_cast<int>(m_request.employees.size());
        try {
            recordAll();
        } catch (const RunError& error) {
            m_result.failure = error;
        }
        m_result.standing = m_standing.failure();
        return m_result;
    }

private:
    void recordAll() {
        m_addIn = Workspace::openAddIn(m_state.DataPath);
        m_associations = m_addIn->openRecordset(QStringLiteral("Select * from [tlyr_assoc];"),
                                                RecordsetType::Snapshot);
        chooseLines();
        if (m_associations->eof())
            return;
        int done = 0;
        for (const QString& code : m_request.employees) {
            if (m_progress)
                m_progress(done++, m_result.employees);
            recordEmployee(code);
        }
    }

    void recordEmployee(const QString& code) {
        m_state.rows().findFirst(QStringLiteral("[emp_code] = ") + SqlText::criterion(code));
        if (m_state.rows().noMatch()) {
            ++m_result.unlisted;
            return;
        }
        m_standing.beginEmployee(code, m_state.rows());
        for (const auto& [kind, amount] : m_lines)
            WriteAnswer(*kind, amount);
        if (std::exchange(m_result.partly, std::nullopt))
            ++m_result.recorded;
        else if (!m_lines.empty())
            ++m_result.withoutRule;
    }

    // The kinds of answer that the request asks for and that are set up, with their amounts.
    void chooseLines() {
        for (const auto& [wanted, action] : {std::pair(m_request.accept, AuditAction::Accepted),
                                             std::pair(m_request.decline, AuditAction::Declined)}) {
            // Broken out, an answer that is both counts as accepted, whether that is set up or not.
            const bool isSettled =
                m_request.breakOut && m_request.accept && action == AuditAction::Declined;
            if (!wanted || isSettled || !m_lines.empty())
                continue;
            addLine(answerKind(action, Rate::OneAndAHalf), m_request.amount);
            if (m_request.breakOut)
                addLine(answerKind(action, Rate::Double), m_request.doubleAmount);
        }
    }

    void addLine(const AnswerKind& kind, const QString& amount) {
        if (!isSetUp(kind)) {
            m_result.notSetUp.push_back(&kind);
        } else if (!m_request.breakOut || IsTime(amount)) {
            m_lines.emplace_back(&kind, amount);
            m_result.amounts.append(amount);
        }
    }

    Variant absentCode(const AnswerKind& kind) const {
        return m_associations->field(QString::fromUtf16(kind.association));
    }

    bool isSetUp(const AnswerKind& kind) const {
        return !m_associations->eof() && !absentCode(kind).isNull();
    }

    void WriteAnswer(const AnswerKind& kind, const QString& amount) {
        const std::int32_t minutes = TimeConversion::toMinutes(amount);
        const Recordset& employee = m_state.rows();
        const Variant shift = employee.field(QStringLiteral("emp_shift"));
        const auto& shiftRule = ruleOf(Nz(shift).toText());
        if (!shiftRule)
            return;
        const Variant ownRule = employee.field(QStringLiteral("defaulttimecalc"));
        const Variant rule = ownRule.isNull() ? *shiftRule : ownRule;
        const Answer answer{employee.field(QStringLiteral("emp_code")).toText(),
                            rule.toText(),
                            shift.toText(),
                            absentCode(kind).toText(),
                            Variant(m_request.canvassDate).toDate(),
                            minutes,
                            kind};
        write(answer);
    }

    // Nothing for a shift that the host does not know. It is asked once a command.
    const std::optional<Variant>& ruleOf(const QString& shift) {
        const auto known = m_rules.find(shift);
        if (known != m_rules.end())
            return known->second;
        const auto rules = m_state.hostOptions()->openRecordset(
            QStringLiteral("Select [Shift_Rule_Num] from [Shift] where [Shift_Code] = ") +
                SqlText::literal(shift) + QLatin1Char(';'),
            RecordsetType::Snapshot);
        std::optional<Variant>& rule = m_rules[shift];
        if (!rules->eof())
            rule = rules->field(QStringLiteral("shift_rule_num"));
        return rule;
    }

    bool counts(Date date) const { return !m_state.period || m_state.period->contains(date); }

    // Each write stands on its own, on a server all or none do; but no other program may come
    // between them.
    void write(const Answer& answer) {
        const AnswerStatements statements(answer, m_request);
        const auto host = m_state.hostOptions();
        Transaction history(host, TransactionKind::Reserve);
        Transaction audit(addIn(), TransactionKind::Reserve);
        std::optional<Transaction> board;
        if (counts(answer.date))
            board.emplace(m_state.rows().database(), TransactionKind::Reserve);
        host->execute(statements.history);
        host->announce(DeskNews::answerRecorded);
        if (history.commit())
            m_result.partly = answer.emp;
        writeEntry(audit, answer.emp, statements);
        if (board)
            addToBoard(*board, answer.emp, statements);
    }

    // An entry is written alone where what is kept along with it cannot be. A disk that fails has
    // undone by then what was reserved.
    void writeEntry(Transaction& audit, const QString& emp, const AnswerStatements& statements) {
        if (m_standing.write(*m_addIn, statements.audit, statements.entry) && keepEntry(audit, emp))
            return;
        const bool isReserved = m_addIn->inTransaction();
        m_addIn->execute(statements.audit);
        if (!isReserved || audit.commit())
            m_result.partly = emp;
    }

    // Of the failures of a commit, that of a full disk has certainly written nothing.
    bool keepEntry(Transaction& audit, const QString& emp) {
        try {
            if (audit.commit())
                m_result.partly = emp;
        } catch (const RunError& error) {
            if (error.number() != ErrorNumber::diskFull)
                throw;
            m_standing.noteFailure(error);
            return false;
        }
        m_standing.noteKept();
        return true;
    }

    // The connection that the command began with serves all its answers, unless somebody has put
    // another file in that place or none.
    const std::shared_ptr<Database>& addIn() {
        if (!m_addIn->isInPlace())
            m_addIn = Workspace::openAddIn(m_state.DataPath);
        return m_addIn;
    }

    // The derived columns of other employees hold what they held.
    void addToBoard(Transaction& transaction, const QString& emp,
                    const AnswerStatements& statements) {
        const auto board = m_state.rows().database();
        const bool current = DerivedColumns::areCurrent(m_state, m_request.multiply);
        const bool derived = DerivedColumns::computeFor(*board, m_request.multiply,
                                                        statements.board, statements.employee);
        if (!derived)
            board->execute(statements.board);
        if (current && derived)
            DerivedColumns::noteCurrent(m_state, board, m_request.multiply);
        if (transaction.commit())
            m_result.partly = emp;
        if (!derived)
            DerivedColumns::computeOneByOne(*board, m_request.multiply);
    }

    CanvassState& m_state;
    const AnswerRequest& m_request;
    const Progress& m_progress;
    StandingNotes m_standing;
    std::shared_ptr<Database> m_addIn; // aidb01.mdb
    std::shared_ptr<Recordset> m_associations;
    std::map<QString, std::optional<Variant>> m_rules;          // by shift
    std::vector<std::pair<const AnswerKind*, QString>> m_lines; // of each employee's answer
    Result m_result;
};

} // namespace

bool isValidAmount(const QString& amount) {
    if (!IsTime(amount))
        return false;
    try {
        const std::int32_t minutes = TimeConversion::toMinutes(amount);
        return minutes >= 0 && minutes <= 1440;
    } catch (const RunError&) {
        return false; // "25:00 PM" passes the test of its form and is no time all the same
    }
}

Result record(CanvassState& state, const AnswerRequest& request, const Progress& progress) {
    return Recorder(state, request, progress).run();
}

QString hindranceOf(const QString& user) {
    try {
        SqlText::literal(user);
        return {};
    } catch (const RunError&) {
        return QStringLiteral("Answers cannot be recorded under the name %1").arg(user);
    }
}

} // namespace tallyroom::AnswerRecording
