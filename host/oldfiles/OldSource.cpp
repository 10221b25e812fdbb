#include "host/oldfiles/OldSource.h"

#include "common/TextOrder.h"
#include "host/copy/SchemaSearch.h"
#include "host/oldfiles/OldConversion.h"

#include <QSet>
#include <algorithm>
#include <map>

namespace tallyroom::host {

namespace {

using enum Schema::ColumnType;

// Of a column of ours that takes all texts of the values.
int textWidth(const OldColumn& column) {
    constexpr int flagWidth = 5;
    constexpr int wholeWidth = 11;
    constexpr int numberWidth = 22; // a date's as well
    constexpr int decimalWidth = 40;
    constexpr int guidWidth = 38;
    switch (column.type) {
    case OldType::Boolean:
        return flagWidth;
    case OldType::Whole:
        return wholeWidth;
    case OldType::Single:
    case OldType::Double:
    case OldType::Date:
        return numberWidth;
    case OldType::Decimal:
        return decimalWidth;
    case OldType::Guid:
        return guidWidth;
    default:
        return column.width;
    }
}

TableFormat::Column nearest(const OldColumn& column) {
    switch (column.type) {
    case OldType::Boolean:
        return {column.name, Boolean};
    case OldType::Whole:
        return {column.name, Long};
    case OldType::Single:
    case OldType::Double:
    case OldType::Decimal:
        return {column.name, Double};
    case OldType::Date:
        return {column.name, Date};
    case OldType::Text:
    case OldType::Guid:
        return {column.name, Text, textWidth(column)};
    case OldType::Memo:
    case OldType::Binary:
        return {column.name, Memo};
    }
    return {column.name, Memo};
}

TableFormat::Column formatOf(const OldColumn& column, const Schema::Table* table) {
    const Schema::Column* known = table ? findNamed(table->columns, column.name) : nullptr;
    if (!known)
        return nearest(column);
    const int width = known->type == Text ? std::max(known->width, textWidth(column)) : 0;
    return {QString::fromUtf16(known->name), known->type, width};
}

bool isCopied(const OldColumn& column) {
    return column.type != OldType::Binary;
}

TableFormat formatOf(const OldTable& table, const Schema::Table* known) {
    TableFormat format{known ? QString::fromUtf16(known->name) : table.name, {}};
    for (const OldColumn& column : table.columns) {
        if (isCopied(column))
            format.columns.push_back(formatOf(column, known));
    }
    return format;
}

struct RefusalText {
    int error;
    QString remedy;
};

RefusalText textOf(OldRefusal reason) {
    constexpr int invalidPassword = 3031;
    const auto ask = [](const char16_t* what) {
        return QStringLiteral("With the program that it belongs to, ") + QString::fromUtf16(what);
    };
    switch (reason) {
    case OldRefusal::Password:
        return {invalidPassword, ask(u"take the password off.")};
    case OldRefusal::Encrypted:
        return {invalidPassword, ask(u"take the encryption off.")};
    case OldRefusal::Linked:
        return {ErrorNumber::invalidOperation,
                ask(u"bring the table into this file, or delete the link.")};
    case OldRefusal::Damaged:
        return {ErrorNumber::damagedFile, ask(u"repair and compact it.")};
    case OldRefusal::Unknown:
        return {ErrorNumber::unrecognizedFormat, {}};
    case OldRefusal::Unreadable:
        break;
    }
    return {ErrorNumber::cannotOpenFile, {}};
}

} // namespace

// Of the rows of one table.
class OldSource::Conversion {
public:
    Conversion(const OldTable& old, const TableFormat& format, const Schema::Table* known,
               CopyReport& report)
        : m_old(old), m_format(format), m_report(report), m_keyColumns(keyColumns(known)) {}

    void take(const std::vector<OldRow>& rows, const TakeRows& take) {
        std::vector<Row> kept;
        for (const OldRow& row : rows) {
            ++m_read;
            Row made = rowOf(row);
            if (isNewKey(made))
                kept.push_back(std::move(made));
            else
                m_report.leftOut(m_format.name, m_read,
                                 QStringLiteral("for its key is there already: ") +
                                     shown(row.front()));
        }
        m_written += qint64(kept.size());
        if (!kept.empty())
            take(kept);
    }

    void finish(qint64 counted) {
        if (m_read < counted)
            throw OldFileRefused{
                OldRefusal::Damaged,
                QStringLiteral("the table %1 should have %2 rows, but only %3 can be found.")
                    .arg(m_format.name, QString::number(counted), QString::number(m_read))};
        for (const auto& [column, values] : m_leftOut)
            m_report.leftOut(m_format.name, column, values);
        m_report.table(m_format.name, m_read, m_written, counted);
    }

private:
    // Of the one key that rows must not share, by their place in a row; none for most tables.
    std::vector<std::size_t> keyColumns(const Schema::Table* known) const {
        std::vector<std::size_t> places;
        if (!known)
            return places;
        for (const Schema::Index& index : known->indexes) {
            for (const char16_t* name : index.unique ? index.columns : decltype(index.columns){}) {
                const auto at = std::ranges::find(m_format.columns, QString::fromUtf16(name),
                                                  &TableFormat::Column::name);
                if (at != m_format.columns.end())
                    places.push_back(std::size_t(at - m_format.columns.begin()));
            }
        }
        return places;
    }

    // A key without a value is never the same as another.
    bool isNewKey(const Row& row) {
        QString key;
        for (const std::size_t place : m_keyColumns) {
            if (row[place].isNull())
                return true;
            key += TextOrder::folded(row[place].toText()) + QChar::Null;
        }
        if (m_keyColumns.empty())
            return true;
        const auto before = m_keys.size();
        m_keys.insert(key);
        return m_keys.size() > before;
    }

    Row rowOf(const OldRow& row) {
        Row made;
        made.reserve(m_format.columns.size());
        for (std::size_t at = 0; at < row.size(); ++at) {
            if (isCopied(m_old.columns[at]))
                made.push_back(valueOf(row, at, m_format.columns[made.size()]));
            else if (!std::holds_alternative<std::monostate>(row[at]))
                ++m_leftOut[m_old.columns[at].name];
        }
        return made;
    }

    Variant valueOf(const OldRow& row, std::size_t at, const TableFormat::Column& column) {
        ConvertedValue made = converted(row[at], column);
        if (made.change != OldChange::None)
            m_report.changed({m_format.name, m_read, shown(row.front()), column.name,
                              shown(row[at]), shown(made.value), changeName(made.change)});
        return std::move(made.value);
    }

    const OldTable& m_old;
    const TableFormat& m_format;
    CopyReport& m_report;
    std::vector<std::size_t> m_keyColumns;
    QSet<QString> m_keys;
    std::map<QString, qint64> m_leftOut; // values by column
    qint64 m_read = 0;
    qint64 m_written = 0;
};

OldSource::OldSource(const Schema::File& file, QString path, std::unique_ptr<OldFile> old,
                     CopyReport& report)
    : m_file(file), m_path(std::move(path)), m_old(std::move(old)), m_report(report) {
    try {
        for (OldTable& table : m_old->tables()) {
            if (isScratch(file, table.name))
                continue;
            TableFormat format = formatOf(table, findNamed(file.tables, table.name));
            if (format.columns.empty()) {
                report.leftOut(table.name);
                continue;
            }
            m_formats.push_back(std::move(format));
            m_tables.push_back(std::move(table));
        }
    } catch (const OldFileRefused& reason) {
        throw refused(reason);
    }
}

void OldSource::readRows(const TableFormat& table, const TakeRows& take) {
    const auto at = std::size_t(&table - m_formats.data());
    const OldTable& old = m_tables[at];
    Conversion conversion(old, table, findNamed(m_file.tables, old.name), m_report);
    try {
        conversion.finish(m_old->readRows(
            old, [&](const std::vector<OldRow>& rows) { conversion.take(rows, take); }));
    } catch (const OldFileRefused& reason) {
        throw refused(reason);
    }
}

void OldSource::requireUnchanged() const {
    try {
        m_old->requireUnchanged();
    } catch (const OldFileRefused& reason) {
        throw refused(reason);
    }
}

RunError OldSource::refused(const OldFileRefused& reason) const {
    const RefusalText text = textOf(reason.reason);
    return {text.error,
            QStringLiteral("%1: %2 %3 Nothing was copied.")
                .arg(m_path, reason.text, text.remedy)
                .simplified(),
            QStringLiteral("Brightclock")};
}

} // namespace tallyroom::host
