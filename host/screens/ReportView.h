// A report on the screen.
#pragma once

#include "host/screens/ShownTable.h"
#include "reports/Report.h"

#include <QWidget>
#include <memory>

namespace Ui {
class ReportView;
}

namespace tallyroom::host {

// Words above, notes below; between them one of the tables and charts, chosen by its tab.
class ReportView : public QWidget {
    Q_OBJECT

public:
    explicit ReportView(QWidget* parent = nullptr);
    ~ReportView() override;

    // The tab stays when the report has the same ones as the one before.
    void setReport(Report report);
    // With its tables sorted as they are shown.
    Report shownReport() const;

    const ShownTable& table() const { return m_table; }
    ShownTable& table() { return m_table; }
    bool showsTable() const;

Q_SIGNALS:
    void currentRowChanged(); // also because another table or chart is shown

private:
    void showPart(int part);
    void showTabs();

    std::unique_ptr<Ui::ReportView> m_ui;
    ShownTable m_table;
    Report m_report;
    int m_part = 0; // the tables come first, then the charts
};

} // namespace tallyroom::host
