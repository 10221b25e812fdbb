#include "canvass/AnswerRecording.h"

#include "canvass/CanvassTotals.h"
#include "common/Units.h"

namespace tallyroom::AnswerRecording {

namespace {

// Where the minutes of one kind of answer go.
struct AnswerColumns {
    const char16_t* association; // column of tlyr_assoc that holds the absent code
    const char16_t* history;     // column of TimeHistory
    const char16_t* board;       // column of tlyrTemp
    bool accepted;
};

constexpr AnswerColumns plainAccepted{u"Accepted", u"tlyrAccepted", u"xT15Accepted", true};
constexpr AnswerColumns plainDeclined{u"Declined", u"tlyrDeclined", u"xT15Declined", false};
constexpr AnswerColumns accepted15{u"Accepted", u"tlyrAccepted", u"xt15Accepted", true};
constexpr AnswerColumns accepted20{u"Accepted2", u"tlyrAccepted2", u"xt20Accepted", true};
constexpr AnswerColumns declined15{u"Declined", u"tlyrDeclined", u"xt15Declined", false};
constexpr AnswerColumns declined20{u"Declined2", u"tlyrDeclined2", u"xt20Declined", false};

// One command's recording. CanvassRs stands on the employee whose answer is being written.
class Recorder {
public:
    Recorder(CanvassState& state, const AnswerRequest& request, Recordset& associations,
             int& written)
        : m_state(state), m_request(request), m_associations(associations), m_written(written),
          m_addIn(associations.database()) {}

    void recordEmployee(const QString& code) {
        m_state.rows().findFirst(QStringLiteral("[emp_code] = '") + code + QLatin1Char('\''));
        if (m_state.rows().noMatch())
            return;
        if (m_request.breakOut)
            recordApart();
        else if (m_request.accept && isSetUp(plainAccepted))
            recordLine(plainAccepted, m_request.amount);
        else if (m_request.decline && isSetUp(plainDeclined))
            recordLine(plainDeclined, m_request.amount);
    }

    void finish() {
        if (m_derivedLate)
            computeDerived();
    }

    // What was recorded before a failure counts on the board.
    void finishAfterFailure() {
        try {
            finish();
        } catch (const RunError&) {
            // The failure itself is what is reported; the next fill computes the columns anyway.
        }
    }

private:
    void recordApart() {
        if (!m_request.accept && !m_request.decline)
            return;
        const AnswerColumns& first = m_request.accept ? accepted15 : declined15;
        const AnswerColumns& second = m_request.accept ? accepted20 : declined20;
        if (IsTime(m_request.amount) && isSetUp(first))
            recordLine(first, m_request.amount);
        if (IsTime(m_request.doubleAmount) && isSetUp(second))
            recordLine(second, m_request.doubleAmount);
    }

    Variant absentCode(const AnswerColumns& columns) const {
        return m_associations.field(QString::fromUtf16(columns.association));
    }

    bool isSetUp(const AnswerColumns& columns) const { return !absentCode(columns).isNull(); }

    void recordLine(const AnswerColumns& columns, const QString& amount) {
        WriteAnswer(absentCode(columns).toText(), TimeConversion::toMinutes(amount),
                    QString::fromUtf16(columns.history), QString::fromUtf16(columns.board),
                    columns.accepted, m_request.comment);
    }

    void WriteAnswer(const QString& absentCode, std::int32_t minutes, const QString& historyColumn,
                     const QString& tempColumn, bool accepted, const QString& comment) {
        const Recordset& employee = m_state.rows();
        const Variant shift = employee.field(QStringLiteral("emp_shift"));
        const auto rules = m_state.HostOptionsDb->openRecordset(
            QStringLiteral("Select [Shift_Rule_Num] from [Shift] where [Shift_Code] = '") +
                Nz(shift).toText() + QStringLiteral("';"),
            RecordsetType::Snapshot);
        if (rules->eof())
            return;
        const Variant ownRule = employee.field(QStringLiteral("defaulttimecalc"));
        const QString rule =
            (ownRule.isNull() ? rules->field(QStringLiteral("shift_rule_num")) : ownRule).toText();
        const QString emp = employee.field(QStringLiteral("emp_code")).toText();
        const Date date = Variant(m_request.canvassDate).toDate();
        writeHistory({emp, rule, shift.toText(), absentCode, comment}, date, minutes,
                     historyColumn);
        ++m_written;
        writeAudit(emp.trimmed(), date, minutes, historyColumn, accepted);
        if (!m_state.period || m_state.period->contains(date))
            addToBoard(emp, minutes, tempColumn);
    }

    struct HistoryTexts {
        QString emp;
        QString rule;
        QString shift;
        QString absentCode;
        QString comment;
    };

    // The minutes stand in the transaction as its start, before a stop at midnight. Texts go into
    // the statement as they are: an apostrophe breaks it.
    void writeHistory(const HistoryTexts& texts, Date date, std::int32_t minutes,
                      const QString& historyColumn) const {
        const Date start = TimeConversion::timeAsDate(TimeConversion::toTimeText(minutes));
        const QString day = Dates::toText(date);
        m_state.HostOptionsDb->execute(
            QStringLiteral("Insert Into [TimeHistory] ([thist_emp], [rule], [thist_date], "
                           "[shift_date], [thist_record_type], [thist_shift], [thist_dept], "
                           "[thist_start_time], [thist_stop_time], [thist_attend_code], [") +
            historyColumn + QStringLiteral("], [Notes]) Values ('") + texts.emp +
            QStringLiteral("', '") + texts.rule + QStringLiteral("', #") + day +
            QStringLiteral("#, #") + day + QStringLiteral("#, 'AR', '") + texts.shift +
            QStringLiteral("', '") + m_request.department + QStringLiteral("', #") +
            Dates::toText(start) + QStringLiteral("#, #0:00#, '") + texts.absentCode +
            QStringLiteral("', ") + QString::number(minutes) + QStringLiteral(", '") +
            texts.comment + QStringLiteral("');"));
    }

    void writeAudit(const QString& emp, Date date, std::int32_t minutes,
                    const QString& historyColumn, bool accepted) {
        addIn().execute(
            QStringLiteral("Insert Into [TLYR_Audit] ([Now], [User], [Emp_Code], [Date], "
                           "[Action], [OT], [tHistField]) Values (#") +
            Dates::toText(Dates::now()) + QStringLiteral("#, '") + m_request.user +
            QStringLiteral("', '") + emp + QStringLiteral("', #") + Dates::toText(date) +
            QStringLiteral("#, ") + (accepted ? QStringLiteral("0") : QStringLiteral("1")) +
            QStringLiteral(", ") + QString::number(minutes) + QStringLiteral(", '") +
            historyColumn + QStringLiteral("');"));
    }

    // The connection that the command began with serves all its answers, unless somebody has put
    // another file in that place or none.
    Database& addIn() {
        if (!m_addIn->isInPlace())
            m_addIn = Workspace::openAddIn(m_state.DataPath);
        return *m_addIn;
    }

    // The derived columns of the whole board are computed after the first answer, so that what
    // makes that fail ends the command there, and once more after the last: nobody reads them in
    // between, as every board computes them itself before it shows them.
    void addToBoard(const QString& emp, std::int32_t minutes, const QString& tempColumn) {
        m_state.rows().database()->execute(
            QStringLiteral("Update [tlyrTemp] Set [") + tempColumn +
            QStringLiteral("] = Iif(Isnull([") + tempColumn + QStringLiteral("]),0,[") +
            tempColumn + QStringLiteral("]) + ") + QString::number(minutes) +
            QStringLiteral(" Where ([Emp_Code] = '") + emp + QStringLiteral("');"));
        m_derivedLate = true;
        if (!m_derivedOnce)
            computeDerived();
    }

    void computeDerived() {
        m_derivedLate = false; // also when it fails: that ends the command
        CanvassTotals::applyMultipliers(m_state, m_request.multiply);
        m_derivedOnce = true;
    }

    CanvassState& m_state;
    const AnswerRequest& m_request;
    Recordset& m_associations;
    int& m_written;
    std::shared_ptr<Database> m_addIn; // aidb01.mdb
    bool m_derivedOnce = false;
    bool m_derivedLate = false; // an answer's minutes are not in the derived columns yet
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

void record(CanvassState& state, const AnswerRequest& request, int& written) {
    const auto database = Workspace::openAddIn(state.DataPath);
    const auto associations = database->openRecordset(QStringLiteral("Select * from [tlyr_assoc];"),
                                                      RecordsetType::Snapshot);
    if (associations->eof())
        return;
    Recorder recorder(state, request, *associations, written);
    try {
        for (const QString& code : request.employees)
            recorder.recordEmployee(code);
    } catch (const RunError&) {
        recorder.finishAfterFailure();
        throw;
    }
    recorder.finish();
}

} // namespace tallyroom::AnswerRecording
