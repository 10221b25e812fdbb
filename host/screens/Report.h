// The read-only tables that the host's screens show.
#pragma once

#include <QAbstractTableModel>
#include <QStringList>
#include <vector>

class QTableView;

namespace tallyroom::host {

struct Report {
    struct Column {
        QString header;
        bool isNumber = false; // shown to the right
    };
    std::vector<Column> columns;
    std::vector<QStringList> rows; // as many cells as there are columns
};

class ReportModel : public QAbstractTableModel {
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

    void setReport(Report report);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QVariant alignment(int column) const;

    Report m_report;
};

// Shows the report; the columns take the width that their contents need.
void showReport(ReportModel& model, QTableView& table, Report report);

// Whole minutes as "01:30"; none at all as "".
QString minutesText(int minutes);

} // namespace tallyroom::host
