#include "host/demo/TableLoader.h"

#include "common/Dates.h"
#include "store/Schema.h"

namespace tallyroom::host {

namespace {

std::string insertStatement(const char16_t* table) {
    std::string marks = "?";
    for (std::size_t column = 1; column < Schema::table(table).columns.size(); ++column)
        marks += ", ?";
    return "INSERT INTO \"" + QString::fromUtf16(table).toStdString() + "\" VALUES (" + marks + ")";
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

TableLoader::TableLoader(SQLite::Database& database, const char16_t* table)
    : m_statement(database, insertStatement(table)) {}

void TableLoader::insert(std::initializer_list<Cell> cells) {
    insert(cells.begin(), cells.size());
}

void TableLoader::insert(const Cell* cells, std::size_t count) {
    for (std::size_t at = 0; at < count; ++at) {
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
