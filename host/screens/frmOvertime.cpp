#include "host/screens/frmOvertime.h"

#include "common/Counted.h"
#include "common/look/WindowFit.h"
#include "host/GroupChoices.h"
#include "host/HostMessages.h"
#include "host/help/frmHelp.h"
#include "host/screens/FlowLayout.h"
#include "host/screens/OvertimeTable.h"
#include "host/screens/ReportWait.h"
#include "reports/CallSheet.h"
#include "reports/CheckedData.h"
#include "reports/Reports.h"
#include "reports/StoredOrders.h"
#include "store/Workspace.h"
#include "ui_frmOvertime.h"

#include <QScopedValueRollback>
#include <QShortcut>

namespace tallyroom::host {

namespace {

Report notice(const QString& title, const QString& text) {
    Report report;
    report.title = title;
    report.words << text;
    return report;
}

void setFieldVisible(QWidget& window, QWidget& field, bool isVisible) {
    field.setVisible(isVisible);
    for (auto* label : window.findChildren<QLabel*>()) {
        if (label->buddy() == &field)
            label->setVisible(isVisible);
    }
}

} // namespace

frmOvertime::frmOvertime(const ScreenContext& context, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::frmOvertime>()), m_context(context) {
    m_ui->setupUi(this);
    new FlowLayout(m_ui->Fields);
    WindowFit::grow(*this);
    m_commands =
        std::make_unique<ReportCommands>(*this, *m_ui->Buttons, m_ui->View->table(), context.user,
                                         [this] { return m_ui->View->shownReport(); });
    setUpChoices();
    setUpDays();
    showFields();
    refresh();
    connectControls();
    frmHelp::offerIn(*this);
    WindowFit::fit(*this);
}

frmOvertime::~frmOvertime() = default;

void frmOvertime::setUpChoices() {
    for (const ScreenReport& report : screenReports())
        m_ui->Report->addItem(report.title,
                              report.kind ? QVariant(static_cast<int>(*report.kind)) : QVariant());
    for (const Employee& employee : m_context.data.employees)
        m_ui->Employee->addItem(employee.code + QStringLiteral("  ") + employee.name,
                                employee.code);
    fillGroupChoices(m_context.data, *m_ui->Department, *m_ui->Shift, *m_ui->Qualification);
    for (const auto& [groupBy, name] :
         {std::pair(GroupBy::Department, u"Department"), std::pair(GroupBy::Shift, u"Shift"),
          std::pair(GroupBy::Classification, u"Classification")})
        m_ui->Compared->addItem(QString::fromUtf16(name), static_cast<int>(groupBy));
}

void frmOvertime::setUpDays() {
    const Period shown = periodOf(std::nullopt, *m_context.database, m_context.dataFolder);
    showPeriod(shown);
    m_ui->Day->setDate(nearestDay(shown, QDate::currentDate()));
}

void frmOvertime::showPeriod(const Period& period) {
    const QSignalBlocker quietFrom(m_ui->FromDate);
    const QSignalBlocker quietTo(m_ui->ToDate);
    m_ui->FromDate->setDate(period.from);
    m_ui->ToDate->setDate(period.to);
}

// Checks go by the days on which answers were recorded, all else by those of the overtime.
void frmOvertime::chooseDays() {
    const bool isOfRecording = kind() == ReportKind::Checks;
    if (isOfRecording == m_showsRecordingDays)
        return;
    showPeriod(isOfRecording ? recordingDays(*Workspace::openAddIn(m_context.dataFolder))
                             : periodOf(std::nullopt, *m_context.database, m_context.dataFolder));
    m_showsRecordingDays = isOfRecording;
    m_ui->FromLabel->setText(isOfRecording ? QStringLiteral("Recorded &from")
                                           : QStringLiteral("&From"));
}

void frmOvertime::connectControls() {
    connectFields();
    connectCalls();
    connect(m_ui->Refresh, &QPushButton::clicked, this,
            [this] { runCommand(this, [this] { refresh(); }); });
    auto* again = new QShortcut(QKeySequence(Qt::Key_F5), this);
    connect(again, &QShortcut::activated, m_ui->Refresh, &QPushButton::click);
    connect(m_ui->Buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

void frmOvertime::connectFields() {
    const auto refreshSafely = [this] { runCommand(this, [this] { refresh(); }); };
    connect(m_ui->Report, &QComboBox::currentIndexChanged, this,
            [this] { runCommand(this, [this] { chooseKind(); }); });
    connect(m_ui->ByDepartment, &QRadioButton::toggled, this, refreshSafely);
    for (const QDateEdit* day : {m_ui->FromDate, m_ui->ToDate, m_ui->Day})
        connect(day, &QDateEdit::dateChanged, this, refreshSafely);
    for (const QComboBox* box : {m_ui->Employee, m_ui->Department, m_ui->Shift, m_ui->Qualification,
                                 m_ui->Order, m_ui->Compared})
        connect(box, &QComboBox::currentIndexChanged, this, refreshSafely);
    for (QLineEdit* amount : {m_ui->Start, m_ui->Hours}) {
        connect(amount, &QLineEdit::editingFinished, this, [amount, refreshSafely] {
            if (amount->isModified()) { // not when the focus merely passes
                amount->setModified(false);
                refreshSafely();
            }
        });
    }
}

void frmOvertime::connectCalls() {
    m_ui->Calls->listenIn(*m_ui->View->findChild<QWidget*>(QStringLiteral("Grid")));
    connect(m_ui->Calls, &CallBar::ended, this, [this](Contacts::Outcome outcome) {
        runCommand(this, [this, outcome] { recordCall(outcome); });
    });
    connect(m_ui->View, &ReportView::currentRowChanged, this, &frmOvertime::showCalled);
    showCalled();
}

ScreenKind frmOvertime::kind() const {
    const QVariant kind = m_ui->Report->currentData();
    return kind.isValid() ? ScreenKind(static_cast<ReportKind>(kind.toInt())) : std::nullopt;
}

Period frmOvertime::period() const {
    const auto [from, to] = std::minmax(m_ui->FromDate->date(), m_ui->ToDate->date());
    return {from, to};
}

ReportRequest frmOvertime::request() const {
    const auto chosen = [](const QComboBox* box) { return box->currentData().toString(); };
    ReportRequest request;
    request.kind = *kind();
    if (asksFor(kind(), ReportField::Period))
        request.period = period();
    request.date = m_ui->Day->date();
    request.start = m_ui->Start->text().trimmed();
    request.hours = m_ui->Hours->text().trimmed();
    request.employee = chosen(m_ui->Employee);
    request.group = {chosen(m_ui->Department), chosen(m_ui->Shift), chosen(m_ui->Qualification)};
    request.order = chosen(m_ui->Order);
    request.groupBy = static_cast<GroupBy>(m_ui->Compared->currentData().toInt());
    return request;
}

void frmOvertime::chooseKind() {
    if (asksFor(kind(), ReportField::Order) && m_ui->Order->count() == 0)
        listOrders();
    chooseDays();
    showFields();
    refresh();
}

void frmOvertime::listOrders() {
    const QSignalBlocker quiet(m_ui->Order);
    m_ui->Order->addItem(QStringLiteral("None"), QString());
    for (const QString& order : storedOrders(m_context.dataFolder))
        m_ui->Order->addItem(order, order);
}

void frmOvertime::showFields() {
    using enum ReportField;
    const std::pair<ReportField, QList<QWidget*>> fields[] = {
        {ReportField::Period, {m_ui->FromDate, m_ui->ToDate}},
        {Grouping, {m_ui->ByDepartment, m_ui->ByEmployee}},
        {Day, {m_ui->Day}},
        {Times, {m_ui->Start, m_ui->Hours}},
        {ReportField::Employee, {m_ui->Employee}},
        {Group, {m_ui->Department, m_ui->Shift, m_ui->Qualification}},
        {Order, {m_ui->Order}},
        {Compared, {m_ui->Compared}}};
    for (const auto& [field, controls] : fields) {
        for (QWidget* control : controls)
            setFieldVisible(*this, *control, asksFor(kind(), field));
    }
    m_ui->Calls->setVisible(kind() == ReportKind::Calls);
}

Report frmOvertime::make() {
    if (!kind())
        return overtimeReport(*m_context.database, m_context.data, period(),
                              m_ui->ByDepartment->isChecked() ? OvertimeGrouping::Department
                                                              : OvertimeGrouping::Employee);
    ReportWait wait(this);
    const QString title = m_ui->Report->currentText();
    try {
        return Reports::make(m_context.dataFolder, request(),
                             [&wait](int done, int of) { return wait.goesOn(done, of); });
    } catch (const BadRequest& wrong) {
        return notice(title, wrong.text);
    } catch (const Cancelled&) {
        return notice(title, QStringLiteral("Cancelled. Refresh (F5) makes the report."));
    }
}

void frmOvertime::refresh() {
    if (m_isMaking)
        return;
    const QScopedValueRollback making(m_isMaking, true);
    try {
        const Report report = make();
        m_shown = kind();
        m_ui->View->setReport(report);
    } catch (const RunError&) {
        m_ui->View->setReport(
            notice(m_ui->Report->currentText(), QStringLiteral("The report could not be made.")));
        showCalled();
        throw;
    }
    showCalled();
}

void frmOvertime::showCalled() {
    const bool isSheet = m_shown == ReportKind::Calls && m_ui->View->showsTable();
    const Row* line = isSheet ? m_ui->View->table().currentRow() : nullptr;
    m_ui->Calls->setCalled(line ? (*line)[callSheetCode].textOrEmpty() + QLatin1Char(' ') +
                                      (*line)[callSheetCode + 1].textOrEmpty()
                                : QString());
    showCount();
}

void frmOvertime::showCount() {
    const ValueTable& table = m_ui->View->table().table();
    const qint64 lines = static_cast<qint64>(table.rows.size()) - table.sumRows;
    m_ui->Count->setText(m_ui->View->showsTable() ? counted(lines, u"line", u"lines") : QString());
}

void frmOvertime::recordCall(Contacts::Outcome outcome) {
    const Row* line = m_ui->View->table().currentRow();
    if (!line)
        return;
    const QString code = (*line)[callSheetCode].textOrEmpty();
    recordOutcome(m_context.dataFolder, request(), *line, m_context.user, outcome,
                  m_ui->Calls->remark());
    m_ui->Calls->clearRemark();
    refresh();
    m_ui->View->table().goTo(callSheetCode, code);
    m_ui->View->table().takeFocus();
}

} // namespace tallyroom::host
