#include "host/BucketModel.h"

#include <algorithm>

namespace tallyroom::host {

BucketModel::BucketModel(const BucketSelection& selection, const HostData& data, QObject* parent)
    : QAbstractTableModel(parent), m_selection(selection), m_data(data),
      m_checked(selection.selected()) {}

int BucketModel::checkedCount() const {
    return static_cast<int>(std::ranges::count(m_checked, true));
}

void BucketModel::setChecked(const QModelIndexList& rows, bool checked) {
    std::vector<bool> all = m_checked;
    for (const QModelIndex& index : rows)
        all[static_cast<std::size_t>(index.row())] = checked;
    setAllChecked(std::move(all));
}

void BucketModel::setAllChecked(std::vector<bool> checked) {
    m_checked = std::move(checked);
    Q_EMIT dataChanged(index(0, Code), index(rowCount() - 1, Code), {Qt::CheckStateRole});
    Q_EMIT checkedChanged();
}

int BucketModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_selection.employees().size());
}

int BucketModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : ColumnCount;
}

QString BucketModel::text(const Employee& employee, int column) const {
    switch (column) {
    case Code:
        return employee.code;
    case Name:
        return employee.name;
    case Department:
        return m_data.departmentName(employee.department);
    case Shift:
        return employee.shift;
    default:
        return employee.qualifications.join(QStringLiteral(", "));
    }
}

QVariant BucketModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    if (role == Qt::DisplayRole)
        return text(employee(index.row()), index.column());
    if (role == Qt::CheckStateRole && index.column() == Code)
        return m_checked[static_cast<std::size_t>(index.row())] ? Qt::Checked : Qt::Unchecked;
    return {};
}

bool BucketModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::CheckStateRole || !index.isValid())
        return false;
    setChecked({index}, value.toInt() == Qt::Checked);
    return true;
}

QVariant BucketModel::headerData(int section, Qt::Orientation orientation, int role) const {
    static const QStringList headers{QStringLiteral("Code"), QStringLiteral("Name"),
                                     QStringLiteral("Department"), QStringLiteral("Shift"),
                                     QStringLiteral("Qualifications")};
    if (orientation != Qt::Horizontal)
        return {};
    if (role == Qt::TextAlignmentRole)
        return QVariant(Qt::AlignLeft | Qt::AlignVCenter);
    return role == Qt::DisplayRole ? QVariant(headers.value(section)) : QVariant();
}

Qt::ItemFlags BucketModel::flags(const QModelIndex& index) const {
    const Qt::ItemFlags usual = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    return index.column() == Code ? usual | Qt::ItemIsUserCheckable : usual;
}

BucketFilter::BucketFilter(BucketModel* model, QObject* parent)
    : QSortFilterProxyModel(parent), m_model(model) {
    setSortCaseSensitivity(Qt::CaseInsensitive);
    setSourceModel(model);
}

void BucketFilter::setCriteria(const BucketCriteria& criteria) {
    m_criteria = criteria;
    invalidateFilter();
}

void BucketFilter::setSearch(const QString& text) {
    m_search = text.trimmed();
    invalidateFilter();
}

QModelIndexList BucketFilter::shownRows() const {
    QModelIndexList rows;
    for (int row = 0; row < rowCount(); ++row)
        rows << mapToSource(index(row, BucketModel::Code));
    return rows;
}

bool BucketFilter::filterAcceptsRow(int row, const QModelIndex&) const {
    const Employee& employee = m_model->employee(row);
    return m_criteria.hold(employee) && (employee.code.contains(m_search, Qt::CaseInsensitive) ||
                                         employee.name.contains(m_search, Qt::CaseInsensitive));
}

} // namespace tallyroom::host
