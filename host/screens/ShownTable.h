// The table that a screen of the host's shows.
#pragma once

#include "common/TextTableModel.h"
#include "reports/ValueTable.h"

#include <QObject>

class QTableView;

namespace tallyroom::host {

// Shows values in a view: sorted by a click on a heading or Ctrl+S, which sorts by the column that
// the current cell is in; a second time turns the order round and a third one gives up sorting.
// Ctrl+C in the view copies everything.
class ShownTable : public QObject {
public:
    // The view must outlive it.
    explicit ShownTable(QTableView& view);

    // A table with the headings of the one before stays sorted as that was. The columns take the
    // width that their contents need.
    void show(ValueTable table);

    // As it is shown, columns without values included.
    const ValueTable& table() const { return m_shown; }

    const Row* currentRow() const; // none in an empty table, nor for a sum
    // Makes a row current whose value in a column has this text; without one all stays.
    void goTo(std::size_t column, const QString& text);
    void takeFocus();
    void copy() const; // all rows under their headings, for a spreadsheet

private:
    void sort();
    void sortByCurrent();
    void putIntoView();
    QString sortHeading() const;

    QTableView& m_view;
    TextTableModel m_model;
    ValueTable m_given;
    ValueTable m_shown;
    std::vector<std::size_t> m_columns; // those with values, as the view counts them
};

// Minutes, or nothing for none: what is not there is not to be read.
inline Variant minutesOrNothing(std::int32_t minutes) {
    return minutes == 0 ? Variant::null() : Variant(minutes);
}

} // namespace tallyroom::host
