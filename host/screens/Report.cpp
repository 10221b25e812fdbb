#include "host/screens/Report.h"

#include "common/Units.h"

#include <QTableView>

namespace tallyroom::host {

namespace {
constexpr int columnGap = 8; // pixels
}

void ReportModel::setReport(Report report) {
    beginResetModel();
    m_report = std::move(report);
    endResetModel();
}

int ReportModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_report.rows.size());
}

int ReportModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_report.columns.size());
}

QVariant ReportModel::alignment(int column) const {
    const bool isNumber = m_report.columns[static_cast<std::size_t>(column)].isNumber;
    return QVariant((isNumber ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
}

QVariant ReportModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    if (role == Qt::TextAlignmentRole)
        return alignment(index.column());
    if (role != Qt::DisplayRole)
        return {};
    return m_report.rows[static_cast<std::size_t>(index.row())][index.column()];
}

QVariant ReportModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section >= columnCount())
        return {};
    if (role == Qt::TextAlignmentRole)
        return alignment(section);
    return role == Qt::DisplayRole
               ? QVariant(m_report.columns[static_cast<std::size_t>(section)].header)
               : QVariant();
}

void showReport(ReportModel& model, QTableView& table, Report report) {
    model.setReport(std::move(report));
    table.resizeColumnsToContents();
    for (int column = 0; column < model.columnCount(); ++column)
        table.setColumnWidth(column, table.columnWidth(column) + columnGap);
    table.setCurrentIndex(model.index(0, 0));
}

QString minutesText(int minutes) {
    return minutes == 0 ? QString() : minutesAsTime(Variant(minutes));
}

} // namespace tallyroom::host
