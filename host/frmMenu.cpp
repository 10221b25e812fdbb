#include "host/frmMenu.h"

#include "common/Counted.h"
#include "common/RunError.h"
#include "common/look/Veil.h"
#include "common/look/WindowFit.h"
#include "host/HostMessages.h"
#include "host/help/frmHelp.h"
#include "host/screens/frmOvertime.h"
#include "host/screens/frmSchedule.h"
#include "host/screens/frmTransactions.h"
#include "store/Workspace.h"
#include "ui_frmMenu.h"

#include <QApplication>
#include <QLabel>
#include <QPainter>
#include <algorithm>
#include <tuple>
#include <utility>

namespace tallyroom::host {

frmMenu::frmMenu(std::shared_ptr<Database> database, const HostData& hostData, const QImage& splash)
    : m_ui(std::make_unique<Ui::frmMenu>()), m_database(std::move(database)), m_data(hostData),
      m_splash(splash) {
    veilSplash();
    m_ui->setupUi(this);
    WindowFit::grow(*this);
    resize(size().boundedTo(WindowFit::room(*this)));
    connectMenus();
}

frmMenu::~frmMenu() = default;

void frmMenu::describe(const QString& dataFolder, const QString& user) {
    m_dataFolder = dataFolder;
    m_user = user;
    // Of a site, what it is called, but not all that it takes to reach it.
    m_ui->DataFolder->setText(Workspace::isOnServer(dataFolder) ? dataFolder.section(u'?', 0, 0)
                                                                : dataFolder);
    auto* summary = new QLabel(
        QStringLiteral("%1     User: %2")
            .arg(counted(static_cast<qint64>(m_data.employees.size()), u"employee", u"employees"),
                 user.isEmpty() ? QStringLiteral("(none)") : user));
    summary->setObjectName(QStringLiteral("Summary"));
    m_ui->statusbar->addWidget(summary); // comes back after a menu's own tips
}

void frmMenu::connectMenus() {
    const auto connectHandler = [this](QAction* action, void (frmMenu::*handler)()) {
        connect(action, &QAction::triggered, this,
                [this, handler] { runCommand(this, [this, handler] { (this->*handler)(); }); });
    };
    connectHandler(m_ui->ttedit, &frmMenu::ttedit_click);
    connectHandler(m_ui->mnupms, &frmMenu::mnupms_click);
    connectHandler(m_ui->mnuchangesched, &frmMenu::mnuchangesched_click);
    connectHandler(m_ui->mnuemployeesch, &frmMenu::mnuemployeesch_click);
    connectHandler(m_ui->mnu_ot_anal, &frmMenu::mnu_ot_anal_click);
    connect(m_ui->mnuHelpContents, &QAction::triggered, this, [this] { frmHelp::open(this); });
    connect(m_ui->mnuHelpAbout, &QAction::triggered, this, &frmMenu::aboutRequested);
    connect(m_ui->mnuExit, &QAction::triggered, this, &QWidget::close);
}

void frmMenu::setEntries(const std::vector<AddInEntry>& entries) {
    m_ui->mnuAddIns->clear();
    m_ui->mnuAddIns->setEnabled(!entries.empty());
    std::vector<AddInEntry> ordered = entries; // screens first, then what serves maintenance
    std::stable_sort(ordered.begin(), ordered.end(), [](const AddInEntry& a, const AddInEntry& b) {
        return std::tie(a.type, a.location) < std::tie(b.type, b.location);
    });
    std::int32_t type = ordered.empty() ? 0 : ordered.front().type;
    for (const AddInEntry& entry : ordered) {
        if (std::exchange(type, entry.type) != entry.type)
            m_ui->mnuAddIns->addSeparator();
        QAction* action = m_ui->mnuAddIns->addAction(entry.caption);
        action->setObjectName(entry.callName);
        action->setStatusTip(entry.securityTag);
        connect(action, &QAction::triggered, this,
                [this, name = entry.callName] { Q_EMIT entryRequested(name); });
    }
}

// A connection that was lost does not come back, but the server may.
ScreenContext frmMenu::context() {
    if (m_database->isLost())
        m_database = Workspace::openHostOptions(m_dataFolder);
    return {m_database, m_data, m_dataFolder, m_user};
}

void frmMenu::ttedit_click() {
    frmTransactions(context(), QApplication::activeWindow()).exec();
}

void frmMenu::showSchedule(ScheduleSpan span) {
    frmSchedule(context(), span, canvassPeriod(m_dataFolder), QApplication::activeWindow()).exec();
}

void frmMenu::mnupms_click() {
    showSchedule(ScheduleSpan::Day);
}

void frmMenu::mnuchangesched_click() {
    showSchedule(ScheduleSpan::Week);
}

void frmMenu::mnuemployeesch_click() {
    showSchedule(ScheduleSpan::Month);
}

void frmMenu::mnu_ot_anal_click() {
    frmOvertime(context(), QApplication::activeWindow()).exec();
}

void frmMenu::veilSplash() {
    m_shown = QPixmap::fromImage(veiled(m_splash, palette()).picture);
}

void frmMenu::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        veilSplash();
}

// The picture covers the window and keeps its lower right corner, where the clock is.
void frmMenu::paintEvent(QPaintEvent*) {
    QRectF covered(QPointF(), QSizeF(size()).scaled(m_shown.size(), Qt::KeepAspectRatio));
    covered.moveBottomRight({double(m_shown.width()), double(m_shown.height())});
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(QRectF(rect()), m_shown, covered);
}

// Ends the program, which goes on without windows as long as an add-in's entry runs.
void frmMenu::closeEvent(QCloseEvent* event) {
    QMainWindow::closeEvent(event);
    QCoreApplication::quit();
}

MenuObject::MenuObject(frmMenu* menu) : m_menu(menu) {
    addHandler(QStringLiteral("ttedit_click"), &frmMenu::ttedit_click);
    addHandler(QStringLiteral("mnupms_click"), &frmMenu::mnupms_click);
    addHandler(QStringLiteral("mnuchangesched_click"), &frmMenu::mnuchangesched_click);
    addHandler(QStringLiteral("mnuemployeesch_click"), &frmMenu::mnuemployeesch_click);
    addHandler(QStringLiteral("mnu_ot_anal_click"), &frmMenu::mnu_ot_anal_click);
}

void MenuObject::addHandler(const QString& name, void (frmMenu::*handler)()) {
    addMethod(name, [this, handler](const Arguments&) {
        if (!m_menu)
            throw RunError::make(ErrorNumber::objectNotSet);
        (m_menu->*handler)();
        return Variant();
    });
}

} // namespace tallyroom::host
