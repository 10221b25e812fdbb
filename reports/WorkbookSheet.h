// A sheet of a workbook, filled from its top.
#pragma once

#include "reports/Report.h"

#include <xlsxwriter.h>

namespace tallyroom {

// Of a workbook, which owns them.
struct CellFormats {
    explicit CellFormats(lxw_workbook* book);

    lxw_format* of(ValueKind kind, const Variant& value) const;

    lxw_format* title;
    lxw_format* heading;
    lxw_format* headingOfNumbers;
    lxw_format* plain;
    lxw_format* wrapped;
    lxw_format* minutes;
    lxw_format* minutesBelowZero;
    lxw_format* time;
    lxw_format* day;
    lxw_format* moment;
};

// What the library refuses is kept until asked for.
class WorkbookSheet {
public:
    WorkbookSheet(lxw_worksheet* sheet, const CellFormats& formats)
        : m_sheet(sheet), m_formats(formats) {}

    // The title, the details, who printed it, and when.
    void addHead(const Report& report, const QString& user, Date now);
    // Its columns become as wide as their texts; what is above the values stays where it is.
    // Raises 3051 for more rows than a sheet can hold.
    void addTable(const ValueTable& table);
    void addParagraphs(const QStringList& paragraphs);

    bool isWhole() const { return m_isWhole; }

private:
    void requireRoom(std::size_t lines) const;
    void writeText(lxw_col_t column, const QString& text, lxw_format* format);
    void writeValue(lxw_col_t column, ValueKind kind, const Variant& value);
    void writeLine(const QString& text, lxw_format* format) {
        writeText(0, text, format);
        ++m_row;
    }
    void check(lxw_error error) { m_isWhole = m_isWhole && error == LXW_NO_ERROR; }

    lxw_worksheet* m_sheet;
    const CellFormats& m_formats;
    lxw_row_t m_row = 0;
    bool m_isWhole = true;
};

} // namespace tallyroom
