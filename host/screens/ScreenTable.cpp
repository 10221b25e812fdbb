#include "host/screens/ScreenTable.h"

#include "common/Units.h"

#include <QTableView>

namespace tallyroom::host {

void showTable(TextTableModel& model, QTableView& view, TextTable table) {
    constexpr int columnGap = 8; // pixels
    model.setTable(std::move(table));
    view.resizeColumnsToContents();
    for (int column = 0; column < model.columnCount(); ++column)
        view.setColumnWidth(column, view.columnWidth(column) + columnGap);
    view.setCurrentIndex(model.index(0, 0));
}

QString minutesText(int minutes) {
    return minutes == 0 ? QString() : minutesAsTime(Variant(minutes));
}

} // namespace tallyroom::host
