#include "host/demo/TableLoader.h"

#include <stdexcept>

namespace tallyroom::host {

namespace {

constexpr std::size_t portion = 20'000; // rows
constexpr int minutesOfDay = 1440;

} // namespace

Cell timeOfDay(int minutes) {
    return Date{static_cast<double>(minutes % minutesOfDay) / minutesOfDay};
}

TableLoader::TableLoader(Database& database, const char16_t* table, Columns columns)
    : m_database(database), m_table(QString::fromUtf16(table)) {
    for (const char16_t* column : columns)
        m_columns << QString::fromUtf16(column);
}

void TableLoader::insert(std::span<const Cell> cells) {
    if (static_cast<qsizetype>(cells.size()) != m_columns.size())
        throw std::logic_error("a row of demonstration data does not fit its columns");
    m_rows.emplace_back(cells.begin(), cells.end());
    if (m_rows.size() == portion)
        finish();
}

void TableLoader::finish() {
    m_database.appendRows(m_table, m_columns, m_rows);
    m_rows.clear();
}

} // namespace tallyroom::host
