#include "canvass/TotalsMerge.h"

#include <span>

namespace tallyroom {

namespace {

// The columns of a totals row that make up a derived column of tlyrTemp.
struct DerivedColumn {
    int position;
    std::initializer_list<std::size_t> summands;
};

const std::array<DerivedColumn, 5> derivedColumns = {{{7, {1, 2}},              // WorkedOT
                                                      {8, {3, 4}},              // AcceptedOT
                                                      {9, {5, 6}},              // DeclinedOT
                                                      {10, {1, 2, 3, 4, 5, 6}}, // TotalOT1
                                                      {11, {1, 2, 5, 6}}}};     // TotalOT2

Variant sum(std::span<const Variant> raw, const DerivedColumn& column) {
    double minutes = 0;
    for (const std::size_t position : column.summands)
        minutes += raw[position].toDouble();
    return {minutes};
}

} // namespace

bool TotalsMerge::run(Recordset& totals) {
    openRows();
    const int taken = mergeRows(totals);
    return m_rows && taken == m_rows->rowCount() && m_rows->hasLeftExpected();
}

void TotalsMerge::openRows() {
    m_steps.step([this] {
        m_rows = required(m_board).openRecordset(
            QStringLiteral(
                "Select [emp_code],[T15Hours],[T20Hours],[xT15Accepted],[xT20Accepted],"
                "[xT15Declined],[xT20Declined],[WorkedOT],[AcceptedOT],[DeclinedOT],[TotalOT1],"
                "[TotalOT2] from [tlyrTemp] order by [emp_code];"),
            RecordsetType::Dynaset);
    });
    if (!m_rows || !m_steps.mayWorkAhead())
        return;
    m_rows->expectUpdates(m_updates);
    if (m_rows->hasLeftExpected())
        m_steps.workedAhead();
}

// How many rows have taken totals.
int TotalsMerge::mergeRows(Recordset& totals) {
    int taken = 0;
    bool atEnd = true;
    m_steps.step([&] { atEnd = required(m_rows).eof(); });
    while (!atEnd) {
        bool match = false;
        m_steps.step([&] { match = m_rows->field(0).sameValue(totals.field(0)); });
        taken += match ? 1 : 0;
        if (match && !takeTotals(totals))
            break;
        m_steps.step([&] { m_rows->moveNext(); });
        m_steps.step([&] { atEnd = m_rows->eof(); });
    }
    return taken;
}

// Copies the current totals into the current row. False when those were the last totals.
bool TotalsMerge::takeTotals(Recordset& totals) {
    m_steps.step([&] { m_rows->edit(); });
    RawTotals raw;
    if (m_steps.step([&] { raw = rawTotals(totals); }))
        setTotals(raw);
    m_steps.step([&] { m_rows->update(); });
    m_steps.step([&] { totals.moveNext(); });
    bool atEnd = false;
    m_steps.step([&] { atEnd = totals.eof(); });
    return !atEnd;
}

void TotalsMerge::setTotals(const RawTotals& raw) {
    for (int position = 1; position <= rawColumns; ++position)
        m_steps.step([&] { m_rows->setField(position, raw[static_cast<std::size_t>(position)]); });
    for (const DerivedColumn& column : derivedColumns)
        m_steps.step([&] { m_rows->setField(column.position, sum(raw, column)); });
}

TotalsMerge::RawTotals TotalsMerge::rawTotals(const Recordset& totals) {
    RawTotals raw;
    for (int position = 1; position <= rawColumns; ++position)
        raw[static_cast<std::size_t>(position)] = totals.field(position);
    return raw;
}

} // namespace tallyroom
