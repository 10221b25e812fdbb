#include "common/ui/PrintReport.h"

#include "common/pages/ReportLayout.h"
#include "common/ui/Events.h"
#include "common/ui/Messages.h"
#include "common/ui/WaitPointer.h"

#include <QAction>
#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QToolButton>
#include <algorithm>

namespace tallyroom {

namespace {

constexpr double margin = 12.7; // millimetres; a printer that needs more gets it

bool isWanted(const QPrinter& printer, int page) {
    return printer.printRange() != QPrinter::PageRange || printer.fromPage() == 0 ||
           (page >= printer.fromPage() && page <= printer.toPage());
}

// The pages in the order and as often as the print dialog asks; a printer that makes its own copies
// gets them once.
std::vector<int> sheets(const QPrinter& printer, int count) {
    std::vector<int> wanted;
    for (int page = 1; page <= count; ++page) {
        if (isWanted(printer, page))
            wanted.push_back(page);
    }
    if (printer.pageOrder() == QPrinter::LastPageFirst)
        std::reverse(wanted.begin(), wanted.end());
    std::vector<int> all;
    const int copies = printer.supportsMultipleCopies() ? 1 : printer.copyCount();
    for (int copy = 0; copy < copies; ++copy)
        all.insert(all.end(), wanted.begin(), wanted.end());
    if (!printer.collateCopies())
        std::stable_sort(all.begin(), all.end(), [&](int a, int b) {
            return printer.pageOrder() == QPrinter::LastPageFirst ? a > b : a < b;
        });
    return all;
}

// The toolkit's preview is worked by the mouse alone: its buttons take no focus, and its commands
// have no keys. They are known by their texts, in the toolkit's own translation.
void makeUsableByKeys(QPrintPreviewDialog& preview) {
    for (auto* button : preview.findChildren<QToolButton*>())
        button->setFocusPolicy(Qt::StrongFocus);
    const std::pair<const char*, QKeySequence> keys[] = {
        {"Print", QKeySequence::Print},
        {"Page setup", QKeySequence(QStringLiteral("Ctrl+Shift+P"))},
        {"Next page", QKeySequence(QStringLiteral("Ctrl+PgDown"))},
        {"Previous page", QKeySequence(QStringLiteral("Ctrl+PgUp"))},
        {"Zoom in", QKeySequence::ZoomIn},
        {"Zoom out", QKeySequence::ZoomOut}};
    for (const auto& [text, sequence] : keys) {
        const QString shown = QCoreApplication::translate("QPrintPreviewDialog", text);
        for (auto* action : preview.findChildren<QAction*>()) {
            if (action->text() == shown) {
                action->setShortcut(sequence);
                action->setToolTip(QStringLiteral("%1 (%2)").arg(
                    shown, sequence.toString(QKeySequence::NativeText)));
            }
        }
    }
}

class Printing {
public:
    explicit Printing(const PageSource& report) : m_report(report) {}

    // What went wrong, or "".
    QString run(QWidget* parent) {
        prepare();
        QPrintPreviewDialog preview(&m_printer, parent);
        preview.setObjectName(QStringLiteral("ReportPreview"));
        preview.setWindowTitle(m_report.frame().title);
        preview.resize(parent->window()->size());
        makeUsableByKeys(preview);
        Events::connect(&preview, &QPrintPreviewDialog::paintRequested, &preview,
                        [this](QPrinter* printer) { paint(*printer); });
        const bool printed = preview.exec() == QDialog::Accepted;
        WaitPointer::hide();
        if (!printed || isWritten())
            return {};
        removeFragment();
        return failure();
    }

private:
    void prepare() {
        m_printer.setDocName(m_report.frame().documentName()); // the print dialog proposes it
        m_printer.setPageMargins(QMarginsF(margin, margin, margin, margin),
                                 QPageLayout::Millimeter);
        m_printer.setPageOrientation(m_report.orientation(m_printer.pageLayout()));
    }

    // Called for the preview, again when its page setup changes, and for the printing itself. What
    // goes wrong is told when the preview is left: it must not be interrupted by a box.
    void paint(QPrinter& printer) {
        WaitPointer::show();
        m_painted = false;
        try {
            QPainter painter;
            m_begun = painter.begin(&printer);
            if (m_begun)
                paintPages(painter, printer);
            m_painted = m_begun;
        } catch (const std::exception&) {
        }
        WaitPointer::hide();
    }

    void paintPages(QPainter& painter, QPrinter& printer) const {
        const double point = printer.resolution() / 72.0;
        const ReportLayout layout(
            m_report, printer.pageLayout().paintRectPixels(printer.resolution()).size(), point);
        bool isFirst = true;
        for (const int page : sheets(printer, layout.count())) {
            if (!isFirst)
                printer.newPage();
            isFirst = false;
            layout.paint(painter, page);
        }
    }

    // The toolkit does not say when a disk is full: the file then lacks its end.
    bool isWritten() const {
        if (!m_painted || m_printer.printerState() == QPrinter::Error)
            return false;
        QFile file(m_printer.outputFileName());
        if (m_printer.outputFormat() != QPrinter::PdfFormat || file.fileName().isEmpty())
            return true;
        return file.open(QIODevice::ReadOnly) && file.seek(std::max<qint64>(0, file.size() - 16)) &&
               file.readAll().contains("%%EOF");
    }

    // A file that could not even be opened is not ours.
    void removeFragment() const {
        const QFileInfo file(m_printer.outputFileName());
        if (m_begun && file.isFile())
            QFile::remove(file.filePath());
    }

    QString failure() const {
        const QString file = m_printer.outputFileName();
        return file.isEmpty() ? QStringLiteral("The report could not be printed.")
                              : QStringLiteral("The report could not be written to '%1'. Choose "
                                               "another file or folder.")
                                    .arg(file);
    }

    const PageSource& m_report;
    QPrinter m_printer{QPrinter::HighResolution};
    bool m_begun = false; // the last painting could open its target
    bool m_painted = false;
};

} // namespace

void printReport(QWidget* parent, const PageSource& report) {
    const auto answer = Messages::show(
        parent,
        QStringLiteral("Are you sure that you want to print the %1?").arg(report.frame().title),
        QMessageBox::Question, QMessageBox::Yes | QMessageBox::No);
    if (answer != QMessageBox::Yes)
        return;
    const QString failure = previewReport(parent, report);
    if (!failure.isEmpty())
        Messages::show(parent, failure, QMessageBox::Critical);
}

QString previewReport(QWidget* parent, const PageSource& report) {
    WaitPointer::show(); // while the first pages are made
    return Printing(report).run(parent);
}

} // namespace tallyroom
