#include "host/help/frmHelp.h"

#include "common/look/WindowFit.h"
#include "host/HostMessages.h"
#include "host/HostSettings.h"
#include "host/Places.h"
#include "ui_frmHelp.h"

#include <QGuiApplication>
#include <QPointer>
#include <QPushButton>
#include <QShortcut>
#include <QWindow>

namespace tallyroom::host {

namespace {

const QString sizeKey = QStringLiteral("HelpSize");

} // namespace

void frmHelp::open(QWidget* parent) {
    static QPointer<frmHelp> shown;
    runCommand(parent, [] {
        if (!shown)
            shown = new frmHelp;
        shown->show();
        shown->standWithModalWindow();
        shown->raise();
        shown->activateWindow();
    });
}

void frmHelp::offerIn(QWidget& window) {
    auto* key = new QShortcut(QKeySequence::HelpContents, &window);
    connect(key, &QShortcut::activated, &window, [&window] { open(&window); });
}

frmHelp::frmHelp() : m_ui(std::make_unique<Ui::frmHelp>()) {
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowFlag(Qt::WindowMinMaxButtonsHint);
    m_ui->setupUi(this);
    WindowFit::grow(*this);
    m_ui->Splitter->setStretchFactor(1, 1);
    m_ui->Buttons->button(QDialogButtonBox::Close)->setAutoDefault(false); // Enter finds
    connectControls();
    m_ui->Guide->open(Places::guide());
    const QSize kept = hostSettings().value(sizeKey, size()).toSize();
    resize(kept.boundedTo(WindowFit::room(*this)));
    m_ui->Guide->setFocus();
}

frmHelp::~frmHelp() = default;

void frmHelp::connectControls() {
    const auto onKey = [this](const QKeySequence& keys, const std::function<void()>& act) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, act);
    };
    onKey(QKeySequence::Find, [this] {
        m_ui->Find->setFocus();
        m_ui->Find->selectAll();
    });
    onKey(QKeySequence::FindNext, [this] { find(); });
    onKey(QKeySequence::FindPrevious, [this] { find(QTextDocument::FindBackward); });
    connect(m_ui->Find, &QLineEdit::returnPressed, this, [this] { find(); });
    connect(m_ui->FindNext, &QPushButton::clicked, this, [this] { find(); });
    connect(m_ui->Guide, &QTextBrowser::sourceChanged, this, &frmHelp::listHeadings);
    connect(m_ui->Headings, &QListWidget::currentRowChanged, this, [this](int row) {
        if (row >= 0)
            m_ui->Guide->showHeading(m_headings[static_cast<std::size_t>(row)]);
    });
    connect(m_ui->Buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, &frmHelp::standWithModalWindow);
    connect(qApp, &QCoreApplication::aboutToQuit, this, &QDialog::reject);
}

void frmHelp::listHeadings() {
    m_headings = m_ui->Guide->headings();
    const QSignalBlocker quiet(m_ui->Headings);
    m_ui->Headings->clear();
    for (const GuideView::Heading& heading : m_headings)
        m_ui->Headings->addItem(QString(2 * (heading.level - 1), u' ') + heading.text);
}

void frmHelp::find(QTextDocument::FindFlags flags) {
    const bool isFound = m_ui->Guide->findNext(m_ui->Find->text(), flags);
    m_ui->Missing->setText(isFound ? QString() : QStringLiteral("Not found"));
}

// A window that belongs to the modal one can be read and scrolled while that one is worked with.
void frmHelp::standWithModalWindow() {
    QWindow* modal = QGuiApplication::modalWindow();
    if (windowHandle() && modal != windowHandle()->transientParent())
        windowHandle()->setTransientParent(modal);
}

void frmHelp::done(int result) {
    hostSettings().setValue(sizeKey, size());
    QDialog::done(result);
}

} // namespace tallyroom::host
