#include "canvass/Tallyroom.h"

#include "canvass/CanvassFill.h"
#include "canvass/CanvassTotals.h"
#include "canvass/SortExpression.h"
#include "common/ui/Background.h"
#include "common/ui/DateBinding.h"
#include "common/ui/Events.h"
#include "common/ui/FormOptions.h"
#include "common/ui/GridReport.h"
#include "common/ui/Messages.h"
#include "common/ui/Twips.h"
#include "common/ui/WaitPointer.h"
#include "setup/Associations.h"
#include "setup/frmTLYRAssoc.h"
#include "store/FormOptionsTable.h"
#include "ui_Tallyroom.h"

#include <QCloseEvent>

namespace tallyroom {

namespace {

// The Close item is gone from the window's own menu: only the button closes the board.
constexpr Qt::WindowFlags frameWithoutClose = Qt::Window | Qt::CustomizeWindowHint |
                                              Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                                              Qt::WindowMinMaxButtonsHint;

ErrorAnswer askAboutError(QWidget* parent, const RunError& error) {
    const QString text = QStringLiteral("An error has occured.\n\nNumber: \t\t") +
                         QString::number(error.number()) + QStringLiteral("\nDescription: \t") +
                         error.description().trimmed() + QStringLiteral("\nSource: \t\t") +
                         error.source().trimmed() + QStringLiteral("\n\n");
    const auto button =
        Messages::show(parent, text, QMessageBox::Critical,
                       QMessageBox::Abort | QMessageBox::Retry | QMessageBox::Ignore);
    WaitPointer::show(); // the box brought the window to the front, which took the pointer away
    switch (button) {
    case QMessageBox::Retry:
        return ErrorAnswer::Retry;
    case QMessageBox::Ignore:
        return ErrorAnswer::Ignore;
    default:
        return ErrorAnswer::Abort;
    }
}

} // namespace

Tallyroom::Tallyroom(const HostContext& context)
    : QMainWindow(nullptr, frameWithoutClose), m_context(context),
      m_ui(std::make_unique<Ui::Tallyroom>()), m_popup(new QMenu(QStringLiteral("PopUp"), this)) {
    m_ui->setupUi(this);
    setWindowModality(Qt::ApplicationModal);
    m_ui->centralwidget->installEventFilter(this);
    Events::connect(m_ui->Command1, &QPushButton::clicked, this, [this] { Command1_Click(); });
    connectSetupMenus();
    connectViewMenus();
    connectShortcuts();
    connectAnswers();
}

Tallyroom::~Tallyroom() = default;

void Tallyroom::showModally() {
    if (!Events::run(this, [this] { Form_Load(); })) {
        WaitPointer::hide();
        return;
    }
    show();
    m_loop.exec();
}

void Tallyroom::Form_Load() {
    m_state.DataPath = m_context.DataPath;
    m_state.HostOptionsDb = Workspace::openHostOptions(m_state.DataPath);
    m_state.HostOptionsDb->setProgress([this] { repaint(); }); // the build's long queries
    Background::copyFrom(m_context.SplashPicture, m_ui->centralwidget);
    firstRunSetup();
    m_state.period = TotallingPeriod::read(m_state.DataPath);
    m_ui->mnuDefinePeriod->setVisible(m_context.isMaster());
    m_ui->mnuValidate->setVisible(m_context.isMaster());
    LoadOrderings();
    FormOptions::restore(
        *this, FormOptionsTable::read(m_state.DataPath, m_context.CurrentUser, objectName()));
    // Most answers are for today's overtime; the user sees the date and may change it.
    m_ui->to_date->setText(Dates::format(Dates::today(), QStringLiteral("mm/dd/yyyy")));
    showBreakOut();
    Canvass();
    m_dates = std::make_unique<DateBinding>(this, m_context.DatePickerForm);
    m_dates->bind(m_ui->to_date, m_ui->SSCommand2);
}

void Tallyroom::firstRunSetup() {
    if (Associations::read(m_state.DataPath))
        return;
    Messages::show(
        this,
        QStringLiteral(
            "Welcome to the Tallyroom!\r\n\r\n"
            "This add-in for Brightclock requires some setup to occur prior to starting. After "
            "clicking [Ok] below, you will be taken to a new window which will ask you to "
            "associate two absent codes; one to identify ACCEPTED overtime, and another to "
            "identify DECLINED overtime."),
        QMessageBox::Information);
    frmTLYRAssoc(m_context, this).showModally();
}

void Tallyroom::Form_Activate() {
    WaitPointer::hide();
}

bool Tallyroom::event(QEvent* event) {
    const bool handled = QMainWindow::event(event);
    if (event->type() == QEvent::WindowActivate)
        Form_Activate();
    return handled;
}

void Tallyroom::closeEvent(QCloseEvent* event) {
    event->setAccepted(m_closing);
    if (m_closing)
        Form_QueryUnload();
}

void Tallyroom::Form_QueryUnload() {
    FormOptionsTable::write(m_state.DataPath, m_context.CurrentUser, objectName(),
                            FormOptions::textOf(*this));
    m_dates.reset();
}

bool Tallyroom::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize)
        Form_Resize();
    return QMainWindow::eventFilter(watched, event);
}

void Tallyroom::Form_Resize() {
    const int width = m_ui->centralwidget->width();
    const int height = m_ui->centralwidget->height();
    m_ui->Grid->resize(width - pixels(345), height - pixels(2145));
    m_ui->Command1->move(width - pixels(1440), height - pixels(1200));
    m_ui->Command2->move(width - pixels(2880), height - pixels(1200));
    for (QWidget* label : {m_ui->Label2, m_ui->Label3, m_ui->Label4})
        label->move(label->x(), height - pixels(1320));
    for (QWidget* box : {m_ui->to_date, m_ui->Text1, m_ui->Text2})
        box->move(box->x(), height - pixels(1320) + m_ui->Label2->height());
    m_ui->SSCommand2->move(m_ui->SSCommand2->x(), height - pixels(1260));
    m_ui->Label1->resize(width - 2 * m_ui->Label1->x(), m_ui->Label1->height());
}

void Tallyroom::Command1_Click() {
    CloseObject(m_state.CanvassRs);
    CloseObject(m_state.HostOptionsDb);
    m_closing = true;
    close();
    m_loop.quit();
}

void Tallyroom::Command2_Click() {
    GridReport report =
        GridReport::of(*m_ui->Grid, QStringLiteral("Canvassing Details"), m_context.CurrentUser);
    report.details = reportDetails();
    report.makeElastic(
        {QStringLiteral("Name"), QStringLiteral("Dept"), QStringLiteral("Position")});
    if (m_ui->mnuDateLine->isChecked())
        report.addLine(QStringLiteral("Date"), 24);
    if (m_ui->mnuSigLine->isChecked())
        report.addLine(QStringLiteral("Signature"), 60);
    printReport(this, report);
}

// What a reader of the posted sheet has to know to make sense of the figures.
QStringList Tallyroom::reportDetails() const {
    const auto shown = [](Date day) { return Dates::format(day, QStringLiteral("mm/dd/yyyy")); };
    const QAction* total = m_ui->mnuTot_0->isChecked() ? m_ui->mnuTot_0 : m_ui->mnuTot_1;
    QStringList details;
    details.append(QStringLiteral("Totalling Period: ") +
                   (m_state.period
                        ? QStringLiteral("%1 to %2")
                              .arg(shown(m_state.period->from), shown(m_state.period->to))
                        : QStringLiteral("Indefinite")));
    details.append(QStringLiteral("Total = ") + total->text());
    if (m_ui->mnuMult->isChecked())
        details.back() += QStringLiteral(" (OT hours multiplied by OT value)");
    if (const QAction* ordering = checkedOrdering())
        details.append(QStringLiteral("Order: ") + ordering->property("descr").toString());
    return details;
}

void Tallyroom::Canvass() {
    WaitPointer::show();
    repaint(); // what a menu or a window has covered
    const bool built =
        CanvassTotals::build(m_state, m_context.BucketForm, m_ui->mnuMult->isChecked(),
                             [this](const RunError& error) { return askAboutError(this, error); });
    if (built)
        Update();
    else
        WaitPointer::hide();
}

// Any error ends the fill where it is, without a report; the grid shows what came in until then.
void Tallyroom::Update() {
    WaitPointer::show();
    int unknownElements = 0;
    {
        const GridFill fill(*m_ui->Grid);
        try {
            fillGrid(unknownElements);
        } catch (const RunError&) {
        }
    }
    for (; unknownElements > 0; --unknownElements)
        Messages::show(this, QStringLiteral("Error"), QMessageBox::NoIcon);
    WaitPointer::hide();
}

void Tallyroom::fillGrid(int& unknownElements) {
    TextMeasurer measurer(m_ui->Picture1);
    const CanvassOptions shown = options();
    CanvassFill::begin(*m_ui->Grid, measurer);
    CanvassTotals::applyMultipliers(m_state, shown.multiply);
    if (const QAction* ordering = checkedOrdering())
        m_state.rows().setSort(sortExpression(ordering->data().toString(), shown,
                                              [&unknownElements] { ++unknownElements; }));
    const auto rows = m_state.rows().openRecordset();
    if (!rows->eof())
        CanvassFill::fill(*m_ui->Grid, measurer, *rows, shown);
}

CanvassOptions Tallyroom::options() const {
    CanvassOptions options;
    options.blankForZero = m_ui->mnuBlank0->isChecked();
    options.multiply = m_ui->mnuMult->isChecked();
    options.department = m_ui->mnuDept->isChecked();
    options.position = m_ui->mnuPos->isChecked();
    options.seniorityDate = m_ui->mnuSenDate->isChecked();
    options.seniorityNumber = m_ui->mnuSenNum->isChecked();
    options.breakOut = m_ui->mnuBreakOut->isChecked();
    options.alternatePhone = m_ui->mnuAltPhone->isChecked();
    options.cellPhone = m_ui->mnuCellPhone->isChecked();
    options.pager = m_ui->mnuPager->isChecked();
    options.totalWithAccepted = m_ui->mnuTot_0->isChecked();
    return options;
}

} // namespace tallyroom
