// The board as a program without this project's store would count, keep and show it.
#pragma once

#include "bench/Plain.h"
#include "setup/TotallingPeriod.h"

#include <QAbstractTableModel>
#include <optional>
#include <vector>

namespace tallyroom::bench {

// Counts the board of a data folder: everybody, no weighing.
class PlainBoard {
public:
    explicit PlainBoard(const QString& folder);

    // Empties the scratch table and fills it with one statement, in one transaction.
    void write(const std::optional<TotallingPeriod>& period);

private:
    Plain m_connection;
};

// The rows of the scratch table in order of total overtime, a text for each column of the grid.
std::vector<QStringList> sortedRows(const QString& folder);

// A table model that holds texts and nothing else.
class BareModel : public QAbstractTableModel {
public:
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

    void setRows(std::vector<QStringList> rows);
    QStringList firstColumn() const;

private:
    std::vector<QStringList> m_rows;
};

} // namespace tallyroom::bench
