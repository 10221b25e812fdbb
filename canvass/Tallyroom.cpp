#include "canvass/Tallyroom.h"

#include "canvass/CanvassFill.h"
#include "canvass/CanvassTotals.h"
#include "canvass/DerivedColumns.h"
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
#include "store/Workspace.h"
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

// Raises 3049 for a damaged file. False when one could not be looked at: it fails those who use it,
// in their turn.
bool areFilesSound(const QString& dataPath) {
    bool all = true;
    for (const auto open : {Workspace::openAddIn, Workspace::openMain}) {
        try {
            open(dataPath, WhenInUse::Fail)->checkStructure();
        } catch (const RunError& error) {
            if (error.number() == ErrorNumber::damagedFile)
                throw;
            all = false;
        }
    }
    return all;
}

} // namespace

Tallyroom::Tallyroom(const HostContext& context)
    : QMainWindow(nullptr, frameWithoutClose), m_context(context),
      m_ui(std::make_unique<Ui::Tallyroom>()), m_popup(new QMenu(QStringLiteral("PopUp"), this)),
      m_statusText(new QLabel(this)) {
    m_ui->setupUi(this);
    m_view = std::make_unique<ViewMenu>(*this, *m_ui, [this] { Update(); });
    m_statusText->setObjectName(QStringLiteral("lblStatus"));
    m_statusText->setIndent(10); // under the grid
    m_ui->StatusBar1->addWidget(m_statusText, 1);
    setWindowModality(Qt::ApplicationModal);
    m_ui->centralwidget->installEventFilter(this);
    Events::connect(m_ui->Command1, &QPushButton::clicked, this, [this] { Command1_Click(); });
    connectSetupMenus();
    connectOrderMenu();
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
    m_state.progress = [this] { repaint(); };
    m_state.openHostOptions();
    m_areFilesSound = areFilesSound(m_state.DataPath);
    m_status.user = AnswerRecording::hindranceOf(m_context.CurrentUser);
    Background::copyFrom(m_context.SplashPicture, m_ui->centralwidget);
    firstRunSetup();
    readPeriod();
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

// A period that is stored and cannot be read must not pass for none.
void Tallyroom::readPeriod() {
    m_state.period.reset();
    m_status.period.clear();
    try {
        m_state.period = TotallingPeriod::read(m_state.DataPath);
    } catch (const RunError& error) {
        if (error.number() != TotallingPeriod::unreadable)
            throw;
        m_status.period = QStringLiteral(
            "The stored totalling period cannot be read: the totals cover all dates");
        Messages::show(this, m_status.period + QLatin1Char('.'), QMessageBox::Warning);
    }
}

void Tallyroom::showStatus() {
    const QString text = m_status.text();
    m_statusText->setText(text);
    m_statusText->setToolTip(text); // where the window is too narrow for it
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
    report.makeElastic(BoardColumns::headersOf(CellKind::Text));
    if (m_ui->mnuDateLine->isChecked())
        report.addLine(QStringLiteral("Date"), 24);
    if (m_ui->mnuSigLine->isChecked())
        report.addLine(QStringLiteral("Signature"), 60);
    printReport(this, report);
}

// What a reader of the posted sheet has to know to make sense of the figures.
QStringList Tallyroom::reportDetails() const {
    const auto shown = [](Date day) { return Dates::format(day, QStringLiteral("mm/dd/yyyy")); };
    QStringList details;
    details.append(QStringLiteral("Totalling Period: ") +
                   (m_state.period
                        ? QStringLiteral("%1 to %2")
                              .arg(shown(m_state.period->from), shown(m_state.period->to))
                        : QStringLiteral("Indefinite")));
    details.append(QStringLiteral("Total = ") + m_view->totalCaption());
    if (m_ui->mnuMult->isChecked())
        details.back() += QStringLiteral(" (OT hours multiplied by OT value)");
    if (const QAction* ordering = checkedOrdering())
        details.append(QStringLiteral("Order: ") + ordering->property("descr").toString());
    return details;
}

void Tallyroom::Canvass() {
    WaitPointer::show();
    repaint(); // what a menu or a window has covered
    m_areFilesSound = m_areFilesSound || areFilesSound(m_state.DataPath);
    m_status.command.clear();
    const bool built =
        CanvassTotals::build(m_state, m_context.BucketForm, m_ui->mnuMult->isChecked(),
                             [this](const RunError& error) { return askAboutError(this, error); });
    m_status.stale = m_status.stale && !built;
    if (built)
        return Update();
    showStatus();
    WaitPointer::hide();
}

void Tallyroom::Update() {
    fillBoard();
}

// Any error ends the fill where it is, without a report; the grid shows what came in until then.
bool Tallyroom::fillBoard() {
    WaitPointer::show();
    int unknownElements = 0;
    bool filled = true;
    {
        const GridFill fill(*m_ui->Grid);
        try {
            fillGrid(unknownElements);
        } catch (const RunError&) {
            filled = false;
        }
    }
    showStatus();
    for (; unknownElements > 0; --unknownElements)
        Messages::show(this, QStringLiteral("Error"), QMessageBox::NoIcon);
    WaitPointer::hide();
    return filled;
}

void Tallyroom::fillGrid(int& unknownElements) {
    TextMeasurer measurer(m_ui->Picture1);
    const BoardOptions shown = m_view->options();
    CanvassFill::begin(*m_ui->Grid, measurer);
    DerivedColumns::ApplyMultipliers(m_state, shown.multiply);
    if (const QAction* ordering = checkedOrdering())
        m_state.rows().setSort(sortExpression(ordering->data().toString(), shown,
                                              [&unknownElements] { ++unknownElements; }));
    const auto rows = m_state.rows().openRecordset();
    const int leftOut = rows->eof() ? 0 : CanvassFill::fill(*m_ui->Grid, measurer, *rows, shown);
    m_status.employees = leftOut == 0
                             ? QString()
                             : QStringLiteral("%1 left out: the code cannot be read").arg(leftOut);
}

} // namespace tallyroom
