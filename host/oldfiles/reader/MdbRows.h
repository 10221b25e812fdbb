// The rows of one table, with their values.
#pragma once

#include "host/oldfiles/OldValue.h"
#include "host/oldfiles/reader/MdbTexts.h"

namespace tallyroom::host {

// Stricter than the library, which passes over what it cannot read: throws OldFileRefused (Damaged)
// with the table's name.
class MdbRows {
public:
    // Of a table with its columns.
    MdbRows(MdbTableDef& table, const MdbTexts& texts);

    void read(const TakeOldRows& take);

private:
    void readPage();
    void addRow(int at);
    void addContinuedRow(int start, std::size_t size);
    void addRowOfPage(int start, std::size_t size);
    OldValue value(const MdbField& field, const MdbColumn& column) const;
    OldValue fixedValue(int start, const MdbColumn& column) const;
    void flush();
    [[noreturn]] void refuse(const QString& what) const;

    MdbTableDef& m_table;
    MdbHandle& m_mdb;
    const MdbTexts& m_texts;
    std::vector<MdbField> m_fields;
    std::vector<OldRow> m_rows; // not given yet
    qsizetype m_size = 0;       // of their texts, about
    const TakeOldRows* m_take = nullptr;
};

} // namespace tallyroom::host
