#include "host/demo/TableLoader.h"

#include "common/Dates.h"

#include <QStringList>
#include <stdexcept>

namespace tallyroom::host {

namespace {

std::string insertStatement(const char16_t* table, TableLoader::Columns columns) {
    QStringList names;
    for (const char16_t* column : columns)
        names << QStringLiteral("\"%1\"").arg(QString::fromUtf16(column));
    const QStringList marks(names.size(), QStringLiteral("?"));
    const QString comma = QStringLiteral(", ");
    return utf8(QStringLiteral("INSERT INTO \"%1\" (%2) VALUES (%3)")
                    .arg(QString::fromUtf16(table), names.join(comma), marks.join(comma)));
}

} // namespace

std::string utf8(const QString& text) {
    return text.toStdString();
}

std::string dayText(QDate day) {
    return utf8(Dates::toIso(Dates::fromQDate(day)));
}

std::string momentText(const QDateTime& moment) {
    return utf8(Dates::toIso(Dates::fromQDateTime(moment)));
}

std::string timeText(int minutes) {
    return utf8(Dates::toIso(Date{minutes / 1440.0}));
}

TableLoader::TableLoader(SQLite::Database& database, const char16_t* table, Columns columns)
    : m_statement(database, insertStatement(table, columns)), m_columns(columns.size()) {}

void TableLoader::insert(std::span<const Cell> cells) {
    if (cells.size() != m_columns)
        throw std::logic_error("a row of demonstration data does not fit its columns");
    for (std::size_t at = 0; at < cells.size(); ++at) {
        const int position = static_cast<int>(at) + 1;
        std::visit(
            [&](const auto& value) {
                using Type = std::decay_t<decltype(value)>;
                if constexpr (std::is_same_v<Type, std::monostate>)
                    m_statement.bind(position);
                else if constexpr (std::is_same_v<Type, std::string>)
                    m_statement.bindNoCopy(position, value);
                else
                    m_statement.bind(position, value);
            },
            cells[at]);
    }
    m_statement.exec();
    m_statement.reset();
}

LoadedFile::LoadedFile(const QString& path)
    : m_database(path.toStdString(), SQLite::OPEN_READWRITE), m_transaction(prepared(m_database)) {}

SQLite::Database& LoadedFile::prepared(SQLite::Database& database) {
    database.exec("PRAGMA journal_mode = OFF");
    database.exec("PRAGMA synchronous = OFF");
    return database;
}

} // namespace tallyroom::host
