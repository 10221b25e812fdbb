// The read-only tables that the host's screens show.
#pragma once

#include "common/TextTableModel.h"

class QTableView;

namespace tallyroom::host {

// Shows the table; the columns take the width that their contents need.
void showTable(TextTableModel& model, QTableView& view, TextTable table);

// Whole minutes as "01:30"; none at all as "".
QString minutesText(int minutes);

} // namespace tallyroom::host
