// The employees of the bucket form as a table with check marks, and what of it is shown.
#pragma once

#include "host/BucketSelection.h"
#include "host/NamedBuckets.h"

#include <QAbstractTableModel>
#include <QSortFilterProxyModel>

namespace tallyroom::host {

// Works on a copy of the selection, so that the form can be cancelled.
class BucketModel : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { Code, Name, Department, Shift, Qualifications, ColumnCount };

    // Both must outlive the model.
    BucketModel(const BucketSelection& selection, const HostData& data, QObject* parent);

    const std::vector<bool>& checked() const { return m_checked; }
    int checkedCount() const;
    void setChecked(const QModelIndexList& rows, bool checked); // of this model
    void setAllChecked(std::vector<bool> checked);              // one for each employee

    const Employee& employee(int row) const {
        return m_selection.employees()[static_cast<std::size_t>(row)];
    }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

Q_SIGNALS:
    void checkedChanged();

private:
    QString text(const Employee& employee, int column) const;

    const BucketSelection& m_selection;
    const HostData& m_data;
    std::vector<bool> m_checked;
};

// Empty criteria let everybody through.
class BucketFilter : public QSortFilterProxyModel {
    Q_OBJECT

public:
    BucketFilter(BucketModel* model, QObject* parent);

    void setCriteria(const BucketCriteria& criteria);
    const BucketCriteria& criteria() const { return m_criteria; }
    void setSearch(const QString& text); // somewhere in the code or the name, in any case

    QModelIndexList shownRows() const; // of the model behind

protected:
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override;

private:
    BucketModel* m_model;
    BucketCriteria m_criteria;
    QString m_search;
};

} // namespace tallyroom::host
