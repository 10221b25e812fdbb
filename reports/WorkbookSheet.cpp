#include "reports/WorkbookSheet.h"

#include "common/RunError.h"
#include "reports/ExportText.h"

#include <algorithm>
#include <cmath>

namespace tallyroom {

namespace {

constexpr qsizetype longestText = 32767; // that a cell holds
constexpr double firstSafeDay = 61;      // before, the spreadsheet counts a day that never was

lxw_format* shownAs(lxw_workbook* book, const char* picture) {
    lxw_format* format = workbook_add_format(book);
    format_set_num_format(format, picture);
    return format;
}

lxw_format* bold(lxw_workbook* book, double points) {
    lxw_format* format = workbook_add_format(book);
    format_set_bold(format);
    format_set_font_size(format, points);
    return format;
}

lxw_format* underlined(lxw_workbook* book, lxw_format_alignments alignment) {
    lxw_format* format = bold(book, 11);
    format_set_bottom(format, LXW_BORDER_THIN);
    format_set_align(format, static_cast<std::uint8_t>(alignment));
    return format;
}

lxw_format* wrapping(lxw_workbook* book) {
    lxw_format* format = workbook_add_format(book);
    format_set_text_wrap(format);
    format_set_align(format, LXW_ALIGN_VERTICAL_TOP);
    return format;
}

// A number as the spreadsheet keeps it, where it can.
std::optional<double> numberOf(ValueKind kind, const Variant& value) {
    if (value.type() == Variant::Type::Text || kind == ValueKind::Text)
        return std::nullopt;
    const double number = value.toDouble();
    switch (kind) {
    case ValueKind::Minutes:
        return number / (24 * 60);
    case ValueKind::TimeOfDay:
        return std::abs(number - std::trunc(number));
    case ValueKind::Day:
        return number < firstSafeDay ? std::nullopt : std::optional(std::floor(number));
    case ValueKind::Moment:
        return number < firstSafeDay ? std::nullopt : std::optional(number);
    default:
        return number;
    }
}

double widthOf(const ValueTable& table, std::size_t column) {
    constexpr qsizetype least = 8;
    constexpr qsizetype most = 60;
    qsizetype width = table.columns[column].heading.simplified().size();
    for (const Row& row : table.rows)
        width = std::max(width, shownValue(table.columns[column].kind, row[column]).size());
    return static_cast<double>(std::clamp(width + 2, least, most));
}

} // namespace

CellFormats::CellFormats(lxw_workbook* book)
    : title(bold(book, 14)), heading(underlined(book, LXW_ALIGN_LEFT)),
      headingOfNumbers(underlined(book, LXW_ALIGN_RIGHT)), plain(workbook_add_format(book)),
      wrapped(wrapping(book)), minutes(shownAs(book, "[hh]:mm")),
      minutesBelowZero(shownAs(book, "[hh]:mm;-[hh]:mm")), time(shownAs(book, "hh:mm")),
      day(shownAs(book, "mm/dd/yyyy")), moment(shownAs(book, "mm/dd/yyyy hh:mm")) {
    format_set_align(day, LXW_ALIGN_LEFT);
    format_set_align(moment, LXW_ALIGN_LEFT);
    format_set_align(time, LXW_ALIGN_LEFT);
}

lxw_format* CellFormats::of(ValueKind kind, const Variant& value) const {
    switch (kind) {
    case ValueKind::Minutes:
        return value.toDouble() < 0 ? minutesBelowZero : minutes;
    case ValueKind::TimeOfDay:
        return time;
    case ValueKind::Day:
        return day;
    case ValueKind::Moment:
        return moment;
    default:
        return plain;
    }
}

void WorkbookSheet::writeText(lxw_col_t column, const QString& text, lxw_format* format) {
    const QByteArray bytes = exportedText(text).left(longestText).toUtf8();
    if (!bytes.isEmpty())
        check(worksheet_write_string(m_sheet, m_row, column, bytes.constData(), format));
}

void WorkbookSheet::writeValue(lxw_col_t column, ValueKind kind, const Variant& value) {
    if (value.isNull() || value.isEmpty())
        return;
    if (const auto number = numberOf(kind, value))
        check(worksheet_write_number(m_sheet, m_row, column, *number, m_formats.of(kind, value)));
    else
        writeText(column, shownValue(kind, value), m_formats.plain);
}

void WorkbookSheet::addHead(const Report& report, const QString& user, Date now) {
    writeLine(report.title, m_formats.title);
    for (const QString& detail : report.details)
        writeLine(detail, m_formats.plain);
    const QString by = user.isEmpty() ? QString() : QStringLiteral(" by ") + user;
    writeLine(QStringLiteral("Printed %1%2").arg(shownValue(ValueKind::Moment, now), by),
              m_formats.plain);
    ++m_row;
}

void WorkbookSheet::requireRoom(std::size_t lines) const {
    if (m_row + lines > LXW_ROW_MAX)
        throw RunError(ErrorNumber::cannotOpenFile,
                       QStringLiteral("A sheet of a workbook holds %L1 rows, and the report has "
                                      "%L2. Choose fewer days, or a .csv.")
                           .arg(LXW_ROW_MAX)
                           .arg(lines - 1),
                       QStringLiteral("Brightclock"));
}

void WorkbookSheet::addTable(const ValueTable& table) {
    requireRoom(table.rows.size() + 1);
    lxw_col_t column = 0;
    for (std::size_t at = 0; at < table.columns.size(); ++at) {
        const ValueTable::Column& shown = table.columns[at];
        if (!shown.hasValues())
            continue;
        check(worksheet_set_column(m_sheet, column, column, widthOf(table, at), nullptr));
        const bool isRight = shown.alignment() == CellAlignment::Right;
        writeText(column++, shown.heading.simplified(),
                  isRight ? m_formats.headingOfNumbers : m_formats.heading);
    }
    worksheet_freeze_panes(m_sheet, ++m_row, 0);
    for (const Row& row : table.rows) {
        column = 0;
        for (std::size_t at = 0; at < table.columns.size(); ++at) {
            if (table.columns[at].hasValues())
                writeValue(column++, table.columns[at].kind, row[at]);
        }
        ++m_row;
    }
}

void WorkbookSheet::addParagraphs(const QStringList& paragraphs) {
    constexpr double width = 100; // characters
    check(worksheet_set_column(m_sheet, 0, 0, width, nullptr));
    for (const QString& paragraph : paragraphs)
        writeLine(paragraph, m_formats.wrapped);
}

} // namespace tallyroom
