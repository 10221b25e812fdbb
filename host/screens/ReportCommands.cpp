#include "host/screens/ReportCommands.h"

#include "common/ui/PrintReport.h"
#include "host/HostMessages.h"
#include "reports/ReportFile.h"
#include "reports/ReportPages.h"

#include <QFileDialog>
#include <QPushButton>

namespace tallyroom::host {

namespace {

constexpr const char* filters[] = {"Spreadsheet (*.xlsx)", "Comma-separated values (*.csv)",
                                   "PDF (*.pdf)", "Picture of each page (*.png)", "Text (*.txt)"};

QString suffixOf(const QString& filter) {
    return filter.section(QLatin1Char('.'), -1).chopped(1);
}

QStringList nameFilters() {
    QStringList names;
    for (const char* filter : filters)
        names << QString::fromLatin1(filter);
    return names;
}

// "" when the user gives none.
QString askForFile(QWidget& parent, const QString& name) {
    QFileDialog dialog(&parent, QStringLiteral("Export"));
    dialog.setObjectName(QStringLiteral("ExportFile"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setNameFilters(nameFilters());
    dialog.setDefaultSuffix(suffixOf(dialog.selectedNameFilter()));
    QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog,
                     [&](const QString& filter) { dialog.setDefaultSuffix(suffixOf(filter)); });
    dialog.selectFile(name);
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

RunError failed(const QString& text) {
    return {ErrorNumber::cannotOpenFile, text, QStringLiteral("Brightclock")};
}

} // namespace

ReportCommands::ReportCommands(QWidget& window, QDialogButtonBox& buttons, const ShownTable& table,
                               const QString& user, std::function<Report()> shown)
    : m_window(window), m_user(user), m_shown(std::move(shown)) {
    addButton(buttons, QStringLiteral("Copy"), QStringLiteral("Cop&y"), [&table] { table.copy(); });
    addButton(buttons, QStringLiteral("Export"), QStringLiteral("E&xport…"),
              [this] { exportFile(); });
    addButton(buttons, QStringLiteral("Print"), QStringLiteral("Pr&int…"), [this] { print(); });
    for (QAbstractButton* button : buttons.buttons())
        qobject_cast<QPushButton*>(button)->setAutoDefault(false);
}

void ReportCommands::addButton(QDialogButtonBox& buttons, const QString& name, const QString& text,
                               std::function<void()> command) {
    QPushButton* button = buttons.addButton(text, QDialogButtonBox::ActionRole);
    button->setObjectName(name);
    connect(button, &QPushButton::clicked, this,
            [this, command = std::move(command)] { runCommand(&m_window, command); });
}

void ReportCommands::exportFile() {
    const Report report = m_shown();
    const QString name = ReportPages(report, m_user).frame().documentName();
    const QString file = askForFile(m_window, name);
    if (file.isEmpty())
        return;
    const auto format = ReportFile::formatOf(file);
    if (!format)
        throw failed(QStringLiteral("What is exported is told by how the name of the file ends: "
                                    ".xlsx, .csv, .pdf, .png or .txt."));
    ReportFile::write(report, *format, file, m_user);
}

void ReportCommands::print() {
    const QString failure = previewReport(&m_window, ReportPages(m_shown(), m_user));
    if (!failure.isEmpty())
        throw failed(failure);
}

} // namespace tallyroom::host
