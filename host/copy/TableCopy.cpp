#include "host/copy/TableCopy.h"

#include "common/RunError.h"

namespace tallyroom::host {

namespace {

constexpr std::size_t portion = 5'000; // rows

RunError unfit(const TableFormat::Column& column, qint64 row, const Variant& value) {
    return {ErrorNumber::conversionFailed,
            QStringLiteral("row %1 has '%2' in the column %3, which cannot be kept there.")
                .arg(row)
                .arg(value.toText(), column.name),
            QStringLiteral("Brightclock")};
}

bool fits(const Variant& value, const TableFormat::Column& column) {
    using enum Schema::ColumnType;
    switch (column.type) {
    case Text:
        return value.toText().size() <= column.width;
    case Memo:
        return true;
    case Long:
    case Counter:
        return value.type() == Variant::Type::Long;
    case Double:
        return value.type() == Variant::Type::Double || value.type() == Variant::Type::Long;
    case Date:
        return value.type() == Variant::Type::Date;
    case Boolean:
        return value.type() == Variant::Type::Boolean;
    }
    return false;
}

bool isText(const TableFormat::Column& column) {
    return column.type == Schema::ColumnType::Text || column.type == Schema::ColumnType::Memo;
}

// What an engine without firm types may have in a column.
Variant copied(const Variant& value, const TableFormat::Column& column) {
    if (value.type() == Variant::Type::Bytes)
        return {QStringLiteral("\\x") + QString::fromLatin1(value.toBytes().toHex())};
    return isText(column) && !value.isNull() ? Variant(value.toText()) : value;
}

void prepare(std::vector<Row>& rows, const TableFormat& format, qint64 before) {
    for (std::size_t row = 0; row < rows.size(); ++row) {
        for (std::size_t at = 0; at < format.columns.size(); ++at) {
            Variant& value = rows[row][at];
            value = copied(value, format.columns[at]);
            if (!value.isNull() && !fits(value, format.columns[at]))
                throw unfit(format.columns[at], before + static_cast<qint64>(row) + 1, value);
        }
    }
}

using ReadRows = std::function<void(const TakeRows&)>;

// `take` gets the rows of a table in portions, and the number of those before.
template<class Take>
void read(const TableFormat& format, const ReadRows& readRows, const RowProgress& progress,
          const Take& take) {
    try {
        qint64 done = 0;
        readRows([&](const std::vector<Row>& rows) {
            take(rows, done);
            done += static_cast<qint64>(rows.size());
            progress(done);
        });
    } catch (const RunError& error) {
        throw RunError(error.number(), format.name + QStringLiteral(": ") + error.description(),
                       QStringLiteral("Brightclock"));
    }
}

QStringList namesOf(const TableFormat& format) {
    QStringList names;
    for (const TableFormat::Column& column : format.columns)
        names << column.name;
    return names;
}

} // namespace

TableSum copyTable(CopySource& source, Database& target, const TableFormat& format,
                   const RowProgress& progress) {
    const QStringList names = namesOf(format);
    RowDigest digest;
    const auto rowsOfSource = [&](const TakeRows& take) { source.readRows(format, take); };
    read(format, rowsOfSource, progress, [&](const std::vector<Row>& found, qint64 before) {
        std::vector<Row> rows = found;
        prepare(rows, format, before);
        digest.add(rows);
        target.appendRows(format.name, names, rows);
    });
    return digest.sum();
}

TableSum sumOfTable(Database& database, const TableFormat& format, const RowProgress& progress) {
    RowDigest digest;
    const auto rowsOfTable = [&](const TakeRows& take) {
        database.readPortions(format.name, portion, take);
    };
    read(format, rowsOfTable, progress, [&](const std::vector<Row>& found, qint64) {
        std::vector<Row> rows = found;
        for (Row& row : rows)
            row.resize(format.columns.size());
        digest.add(rows);
    });
    return digest.sum();
}

} // namespace tallyroom::host
