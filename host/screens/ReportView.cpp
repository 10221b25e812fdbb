#include "host/screens/ReportView.h"

#include "ui_ReportView.h"

#include <QSignalBlocker>
#include <QTabBar>

namespace tallyroom::host {

namespace {

std::unique_ptr<Ui::ReportView> setUp(QWidget* view) {
    auto ui = std::make_unique<Ui::ReportView>();
    ui->setupUi(view);
    return ui;
}

} // namespace

ReportView::ReportView(QWidget* parent) : QWidget(parent), m_ui(setUp(this)), m_table(*m_ui->Grid) {
    connect(m_ui->Parts, &QTabBar::currentChanged, this, &ReportView::showPart);
    connect(m_ui->Grid->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &ReportView::currentRowChanged);
}

ReportView::~ReportView() = default;

bool ReportView::showsTable() const {
    return m_part >= 0 && m_part < static_cast<int>(m_report.tables.size());
}

void ReportView::setReport(Report report) {
    m_report = std::move(report);
    const bool hasParts = !m_report.tables.empty() || !m_report.charts.empty();
    m_ui->Details->setText(m_report.details.join(QStringLiteral("  ·  ")));
    m_ui->Details->setHidden(m_report.details.isEmpty());
    m_ui->Words->setParagraphs(m_report.words, !hasParts);
    m_ui->Notes->setParagraphs(m_report.notes, !hasParts && m_report.words.isEmpty());
    m_ui->Stack->setVisible(hasParts);
    showTabs();
}

void ReportView::showTabs() {
    QStringList captions;
    for (const ValueTable& table : m_report.tables)
        captions << (table.caption.isEmpty() ? m_report.title : table.caption);
    for (const Chart& chart : m_report.charts)
        captions << chart.caption;
    QTabBar& tabs = *m_ui->Parts;
    QStringList before;
    for (int tab = 0; tab < tabs.count(); ++tab)
        before << tabs.tabText(tab);
    const int part = before == captions ? tabs.currentIndex() : 0;
    const QSignalBlocker quiet(tabs);
    while (tabs.count() > 0)
        tabs.removeTab(0);
    for (const QString& caption : captions)
        tabs.addTab(caption);
    tabs.setVisible(captions.size() > 1);
    tabs.setCurrentIndex(part);
    m_part = part; // what is in the view belongs to the report before
    showPart(part);
}

void ReportView::showPart(int part) {
    const auto tables = static_cast<int>(m_report.tables.size());
    m_part = part;
    if (part < 0 || part >= tables + static_cast<int>(m_report.charts.size()))
        return m_table.show({});
    m_ui->Grid->setAccessibleName(m_ui->Parts->tabText(part));
    if (part < tables)
        m_table.show(m_report.tables[static_cast<std::size_t>(part)]);
    else
        m_ui->Drawing->setChart(m_report.charts[static_cast<std::size_t>(part - tables)]);
    m_ui->Stack->setCurrentWidget(part < tables ? static_cast<QWidget*>(m_ui->Grid)
                                                : m_ui->ChartArea);
    Q_EMIT currentRowChanged();
}

Report ReportView::shownReport() const {
    Report report = m_report;
    if (showsTable())
        report.tables[static_cast<std::size_t>(m_part)] = m_table.table();
    return report;
}

} // namespace tallyroom::host
