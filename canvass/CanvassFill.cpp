#include "canvass/CanvassFill.h"

#include "board/CellText.h"
#include "store/Database.h"
#include "store/Readable.h"

#include <unordered_map>

namespace tallyroom::CanvassFill {

namespace {

using Columns = std::vector<const BoardColumn*>;

std::vector<TextTable::Column> headings(const Columns& columns) {
    std::vector<TextTable::Column> result;
    for (const BoardColumn* column : columns)
        result.push_back({QString::fromUtf16(column->header),
                          column->isRightAligned() ? CellAlignment::Right : CellAlignment::Left});
    return result;
}

// The texts of one row after the other.
class RowTexts {
public:
    RowTexts(const Recordset& rows, Columns columns, const BoardOptions& options)
        : m_columns(std::move(columns)), m_blankForZero(options.blankForZero) {
        for (const BoardColumn* column : m_columns)
            m_positions.push_back(rows.fieldPosition(column->fieldFor(options)));
    }

    QStringList of(const Recordset& row) {
        QStringList cells;
        cells.reserve(static_cast<qsizetype>(m_columns.size()));
        for (std::size_t at = 0; at < m_columns.size(); ++at)
            cells.append(text(m_columns[at]->kind, row.field(m_positions[at])));
        return cells;
    }

private:
    // Of minutes a board shows few different ones.
    QString text(CellKind kind, const Variant& value) {
        if (kind != CellKind::Time || value.type() != Variant::Type::Long)
            return cellText(kind, value, m_blankForZero);
        const auto [known, isNew] = m_times.try_emplace(value.toLong());
        if (isNew)
            known->second = cellText(kind, value, m_blankForZero);
        return known->second;
    }

    Columns m_columns;
    bool m_blankForZero;
    std::vector<int> m_positions; // in the recordset, by column
    std::unordered_map<std::int32_t, QString> m_times;
};

} // namespace

int fill(GridFill& grid, TextWidths& measurer, Recordset& rows, const BoardOptions& options) {
    const Columns columns = BoardColumns::shown(options);
    grid.setColumns(headings(columns));
    grid.AutoSizeColumns(measurer, 0, -1, false);
    RowTexts texts(rows, columns, options);
    const int code = rows.fieldPosition(QStringLiteral("emp_code"));
    const Transaction oneState(rows.database(), TransactionKind::Read);
    int leftOut = 0;
    for (; !rows.eof(); rows.moveNext()) {
        if (!Readable::key(rows.field(code))) {
            ++leftOut;
            continue;
        }
        grid.addRow(texts.of(rows));
        grid.AutoSizeColumns(measurer, -1, -1, false);
    }
    grid.removeEmptyRow();
    return leftOut;
}

} // namespace tallyroom::CanvassFill
