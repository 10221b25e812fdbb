#include "canvass/CanvassBoard.h"

#include "audit/DeskNews.h"
#include "board/SortExpression.h"
#include "canvass/AnswerNews.h"
#include "canvass/BoardControls.h"
#include "canvass/CanvassFill.h"
#include "canvass/CanvassTotals.h"
#include "canvass/DerivedColumns.h"
#include "canvass/QuickBuild.h"
#include "canvass/ReportDetails.h"
#include "common/DateParser.h"
#include "common/ui/Events.h"
#include "common/ui/Messages.h"
#include "common/ui/WaitPointer.h"
#include "store/Workspace.h"
#include "ui_Tallyroom.h"

#include <utility>

namespace tallyroom {

namespace {

constexpr int newsDelay = 200; // milliseconds

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

// The name says which employees these are; a host that has no names, or fails to tell, hinders no
// count.
QString nameOf(const ObjectRef& bucketForm) {
    try {
        return bucketForm.property(QStringLiteral("BucketName")).textOrEmpty();
    } catch (const RunError&) {
        return {};
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

CanvassBoard::CanvassBoard(QWidget& window, const Ui::Tallyroom& ui, const HostContext& context,
                           const ViewMenu& view, const OrderMenu& order)
    : m_window(window), m_ui(ui), m_context(context), m_view(view), m_order(order),
      m_bar(*ui.StatusBar1) {
    connectControls();
}

// What an answer would do follows whatever it goes by.
void CanvassBoard::connectControls() {
    const auto show = [this] { showStatus(); };
    Events::connect(m_ui.Grid->selectionModel(), &QItemSelectionModel::selectionChanged, &m_window,
                    show);
    Events::connect(m_ui.Text1, &QLineEdit::textChanged, &m_window, show);
    Events::connect(m_ui.Text2, &QLineEdit::textChanged, &m_window, show);
    Events::connect(m_ui.mnuBreakOut, &QAction::toggled, &m_window, show);
    Events::connect(m_ui.to_date, &QLineEdit::textChanged, &m_window, [this] { showAsked(); });
    m_news.setSingleShot(true);
    m_news.setInterval(newsDelay);
    Events::connect(&m_news, &QTimer::timeout, &m_window, [this] { showAsked(); });
}

void CanvassBoard::open() {
    m_state.DataPath = m_context.DataPath;
    m_state.progress = [this] { m_window.repaint(); };
    m_state.listener = [this](const QStringList& news) { hear(news); };
    m_state.openHostOptions();
    m_areFilesSound = areFilesSound(m_state.DataPath);
    m_status.user = AnswerRecording::hindranceOf(m_context.CurrentUser);
}

void CanvassBoard::close() {
    m_news.stop();
    CloseObject(m_state.CanvassRs);
    CloseObject(m_state.HostOptionsDb);
}

// A period that is stored and cannot be read must not pass for none.
void CanvassBoard::readPeriod() {
    m_state.period.reset();
    m_status.period.clear();
    try {
        m_state.period = TotallingPeriod::read(m_state.DataPath);
    } catch (const RunError& error) {
        if (error.number() != TotallingPeriod::unreadable)
            throw;
        m_status.period = QStringLiteral(
            "The stored totalling period cannot be read: the totals cover all dates");
        Messages::show(&m_window, m_status.period + QLatin1Char('.'), QMessageBox::Warning);
    }
}

void CanvassBoard::noteOrderings(int leftOut) {
    m_status.orderings = leftOut == 0 ? QString()
                                      : QStringLiteral("%1 orderings left out: the description "
                                                       "cannot be read")
                                            .arg(leftOut);
}

void CanvassBoard::showStatus() {
    m_bar.show(m_status.text(offer().text()), figures().text());
}

void CanvassBoard::showCommand(const QString& command) {
    m_status.command = command;
    m_bar.show(m_status.text(QString()), figures().text());
}

Offer CanvassBoard::offer() const {
    Offer offer = BoardControls::offer(m_ui, m_state.period);
    for (const QString& code : BoardControls::selectedEmployees(m_ui))
        offer.answered += m_asked.hasAnswered(code) ? 1 : 0;
    return offer;
}

BoardFigures CanvassBoard::figures() const {
    const TextTable& shown = m_ui.Grid->table();
    return {m_state.period, m_order.inForce().value_or(Ordering{}).descr,
            shown.isBlank() ? 0 : static_cast<int>(shown.rows.size()), m_bucket,
            m_context.CurrentUser};
}

// Before the first count there is nobody to mark, and the count reads the audit itself.
void CanvassBoard::showAsked() {
    if (m_state.CanvassRs) {
        readAsked();
        markAsked();
    }
    showStatus();
}

void CanvassBoard::readAsked() {
    m_status.asked.clear();
    const auto day = Dates::parse(m_ui.to_date->text());
    if (!day)
        m_asked.clear();
    else if (!m_asked.read(m_state.DataPath, *day))
        m_status.asked = QStringLiteral("Who has been asked could not be read: Refresh");
}

void CanvassBoard::markAsked() {
    QStringList notes;
    for (int row = 1; row < m_ui.Grid->rows(); ++row)
        notes.append(m_asked.noteOf(m_ui.Grid->text(row, 0)));
    m_ui.Grid->setNotes(notes);
}

void CanvassBoard::build() {
    WaitPointer::show();
    m_window.repaint(); // what a menu or a window has covered
    m_areFilesSound = m_areFilesSound || areFilesSound(m_state.DataPath);
    m_status.command.clear();
    m_bucket = nameOf(m_context.BucketForm);
    readAsked();
    const AnswersElsewhere before = std::exchange(m_status.elsewhere, {});
    const bool built = CanvassTotals::build(
        m_state, m_context.BucketForm, m_view.options().multiply,
        [this](const RunError& error) { return askAboutError(&m_window, error); });
    if (built) {
        noteCurrent();
        fill();
        return;
    }
    m_status.elsewhere += before;
    markAsked();
    showStatus();
    WaitPointer::hide();
}

bool CanvassBoard::fill() {
    WaitPointer::show();
    int unknownElements = 0; // reported after the fill
    bool filled = true;
    {
        GridFill fill(*m_ui.Grid);
        try {
            if (isCutOff() && !countAnew())
                throw RunError::make(ErrorNumber::connectionLost);
            fillGrid(fill, [&unknownElements] { ++unknownElements; });
        } catch (const RunError&) {
            filled = false;
        }
    }
    markAsked();
    showStatus();
    for (; unknownElements > 0; --unknownElements)
        Messages::show(&m_window, QStringLiteral("Error"), QMessageBox::NoIcon);
    WaitPointer::hide();
    return filled;
}

void CanvassBoard::fillGrid(GridFill& grid, const std::function<void()>& unknownElement) {
    TextWidths& measurer = TextWidths::in(*m_ui.Picture1);
    const BoardOptions shown = m_view.options();
    grid.AutoSizeColumns(measurer, 0, -1, true);
    DerivedColumns::compute(m_state, shown.multiply);
    if (const auto ordering = m_order.inForce())
        m_state.rows().setSort(sortExpression(ordering->details, shown, unknownElement));
    const auto rows = m_state.rows().openRecordset();
    const int leftOut = rows->eof() ? 0 : CanvassFill::fill(grid, measurer, *rows, shown);
    m_status.employees = leftOut == 0
                             ? QString()
                             : QStringLiteral("%1 left out: the code cannot be read").arg(leftOut);
}

// Whoever answers has to see first what became of the answers before.
void CanvassBoard::record(const AnswerRequest& request) {
    if (isCutOff()) {
        build();
        showCommand(isCutOff() ? Said::nothingRecorded
                               : QStringLiteral("The connection was lost: this is what has been "
                                                "recorded, and nothing since"));
        return;
    }
    WaitPointer::show();
    if (const auto failure = recordAndShow(request))
        throw RunError(*failure);
    WaitPointer::hide();
}

void CanvassBoard::refuse() {
    showCommand(AnswerNews::refusal(offer()));
}

// Returns what ended the command before its end.
std::optional<RunError> CanvassBoard::recordAndShow(AnswerRequest request) {
    m_status.command.clear();
    request.board = snapshot();
    const QStringList names = BoardControls::selectedNames(m_ui);
    const QString next = m_ui.Grid->text(m_ui.Grid->selectedRows().last + 1, 0);
    BoardProgress progress(m_window, m_bar);
    AnswerRecording::Result result =
        AnswerRecording::record(m_state, request, [&progress](int done, int of) {
            progress.show(AnswerNews::progress(done, of));
        });
    readAsked();
    if (!result.failure) {
        m_status.command = AnswerNews::text(request, result, names, Dates::today());
        result.failure = showRecorded(result.anyWritten());
    }
    if (result.failure)
        showAfterFailure(result);
    else if (result.anyWritten())
        goOnTo(next);
    return result.failure;
}

// Down to the last of those who answer.
Standing::Snapshot CanvassBoard::snapshot() const {
    const Ordering ordering = m_order.inForce().value_or(Ordering{});
    const BoardOptions shown = m_view.options();
    Standing::Snapshot board{ordering.descr, ordering.details,      {},
                             shown.multiply, shown.breakOut,        shown.totalWithAccepted,
                             m_bucket,       m_ui.Grid->rows() - 1, {}};
    if (m_state.period)
        board.period = {m_state.period->from, m_state.period->to};
    const int total = m_ui.Grid->columns() - 1;
    for (int row = 1; row <= m_ui.Grid->selectedRows().last; ++row)
        board.rows.push_back({m_ui.Grid->text(row, 0), m_ui.Grid->text(row, total),
                              !m_ui.Grid->note(row).isEmpty()});
    return board;
}

// The row that came after those answered, wherever the order has put it. Below the last one there
// is none, and the user stays where he was.
void CanvassBoard::goOnTo(const QString& code) {
    for (int row = 1; row < m_ui.Grid->rows(); ++row) {
        if (m_ui.Grid->text(row, 0) == code)
            return m_ui.Grid->setCurrentRow(row);
    }
}

// Returns what keeps the new figures from being read.
std::optional<RunError> CanvassBoard::showRecorded(bool anyWritten) {
    try {
        m_state.rows().requery();
    } catch (const RunError& error) {
        return error;
    }
    if (!fill() && anyWritten)
        ownUpToOldFigures();
    return std::nullopt;
}

// What is written must be seen to be, lest it be given again.
void CanvassBoard::showAfterFailure(const AnswerRecording::Result& result) {
    const bool lost = isCutOff();
    if (!result.anyWritten() && !lost) {
        showCommand(Said::nothingRecorded);
        return;
    }
    m_ui.Grid->clearSelection();
    m_status.command =
        QStringLiteral("Recorded for %1 of %2").arg(result.recorded).arg(result.employees);
    if (result.partly)
        m_status.command += QStringLiteral(", for %1 in part").arg(*result.partly);
    if (lost)
        m_status.command += QStringLiteral(", and perhaps for one more: the connection was lost");
    if (!rebuildQuietly())
        ownUpToOldFigures();
}

// Who does not see that an answer is recorded gives it again.
void CanvassBoard::ownUpToOldFigures() {
    m_ui.Grid->clearSelection();
    m_status.stale = true;
    markAsked();
    showStatus();
}

// What was counted is gone with the connection.
bool CanvassBoard::isCutOff() const {
    return m_state.CanvassRs && m_state.CanvassRs->database()->isLost();
}

// Others may record many answers one after the other. Who hears nothing any more has to know.
void CanvassBoard::hear(const QStringList& news) {
    if (news.isEmpty()) {
        m_status.connection = QStringLiteral("The connection to the server was lost: Refresh");
        return showStatus();
    }
    m_status.elsewhere += {static_cast<int>(news.count(DeskNews::answerRecorded)),
                           static_cast<int>(news.count(DeskNews::answerTakenBack))};
    if (!m_news.isActive())
        m_news.start();
}

bool CanvassBoard::countAnew() {
    if (!QuickBuild::run(m_state, m_context.BucketForm, m_view.options().multiply))
        return false;
    m_status.elsewhere = {};
    noteCurrent();
    return true;
}

void CanvassBoard::noteCurrent() {
    m_status.stale = false;
    m_status.connection.clear();
}

// The failure that led here is reported; no other question is asked.
bool CanvassBoard::rebuildQuietly() {
    return countAnew() && fill();
}

// The column may be hidden, and another user may have filled the table with other employees since.
QString CanvassBoard::department() const {
    QStringList codes;
    for (int row = 1; row < m_ui.Grid->rows(); ++row)
        codes.append(m_ui.Grid->text(row, 0));
    try {
        const Impatience atOnce(m_state.rows().database());
        return sharedDepartment(*m_state.rows().openRecordset(), codes);
    } catch (const RunError&) {
        return {}; // the list itself can be printed
    }
}

} // namespace tallyroom
