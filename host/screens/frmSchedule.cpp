#include "host/screens/frmSchedule.h"

#include "common/look/WindowFit.h"
#include "host/HostMessages.h"
#include "host/help/frmHelp.h"
#include "ui_frmSchedule.h"

namespace tallyroom::host {

namespace {

QString title(ScheduleSpan span) {
    switch (span) {
    case ScheduleSpan::Day:
        return QStringLiteral("Daily Schedule");
    case ScheduleSpan::Week:
        return QStringLiteral("Weekly Schedule");
    default:
        return QStringLiteral("Monthly Schedule");
    }
}

} // namespace

frmSchedule::frmSchedule(const ScreenContext& context, ScheduleSpan span,
                         const std::optional<Period>& canvass, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::frmSchedule>()), m_context(context), m_span(span) {
    m_ui->setupUi(this);
    WindowFit::grow(*this);
    setWindowTitle(title(span));
    m_table = std::make_unique<ShownTable>(*m_ui->Grid);
    m_commands = std::make_unique<ReportCommands>(*this, *m_ui->Buttons, *m_table, context.user,
                                                  [this] { return report(); });
    m_ui->Day->setDate(canvass ? nearestDay(*canvass, QDate::currentDate())
                               : lastRecordedDay(*context.database));
    refresh();
    connectControls();
    frmHelp::offerIn(*this);
    WindowFit::fit(*this);
}

frmSchedule::~frmSchedule() = default;

void frmSchedule::connectControls() {
    connect(m_ui->Previous, &QPushButton::clicked, this, [this] { move(-1); });
    connect(m_ui->Next, &QPushButton::clicked, this, [this] { move(1); });
    connect(m_ui->Day, &QDateEdit::dateChanged, this,
            [this] { runCommand(this, [this] { refresh(); }); });
    connect(m_ui->Buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

void frmSchedule::move(int direction) {
    m_ui->Day->setDate(moved(m_ui->Day->date(), m_span, direction));
}

void frmSchedule::refresh() {
    const Period period = spanAround(m_ui->Day->date(), m_span);
    m_table->show(scheduleTable(*m_context.database, m_context.data, period));
    m_ui->Span->setText(period.from == period.to ? period.from.toString(QStringLiteral("dddd"))
                                                 : shownPeriod(period));
}

Report frmSchedule::report() const {
    Report report;
    report.title = windowTitle();
    report.details = {shownPeriod(spanAround(m_ui->Day->date(), m_span))};
    report.tables = {m_table->table()};
    return report;
}

} // namespace tallyroom::host
