#include "bench/Plain.h"

#include <stdexcept>

namespace tallyroom::bench {

namespace {

void check(sqlite3* handle, int result) {
    if (result != SQLITE_OK && result != SQLITE_ROW && result != SQLITE_DONE)
        throw std::runtime_error(sqlite3_errmsg(handle));
}

} // namespace

Plain::Plain(const QString& file) {
    check(m_handle,
          sqlite3_open_v2(file.toUtf8().constData(), &m_handle, SQLITE_OPEN_READWRITE, nullptr));
    sqlite3_busy_timeout(m_handle, 2000);
    run("PRAGMA synchronous = EXTRA");
}

Plain::~Plain() {
    sqlite3_close(m_handle);
}

void Plain::run(const std::string& sql) {
    check(m_handle, sqlite3_exec(m_handle, sql.c_str(), nullptr, nullptr, nullptr));
}

PlainStatement::PlainStatement(Plain& connection, const std::string& sql)
    : m_connection(connection) {
    check(connection.handle(),
          sqlite3_prepare_v2(connection.handle(), sql.c_str(), static_cast<int>(sql.size()),
                             &m_statement, nullptr));
}

PlainStatement::~PlainStatement() {
    sqlite3_finalize(m_statement);
}

void PlainStatement::bind(int parameter, std::string_view text) {
    check(m_connection.handle(),
          sqlite3_bind_text(m_statement, parameter, text.data(), static_cast<int>(text.size()),
                            SQLITE_TRANSIENT));
}

void PlainStatement::bind(int parameter, int number) {
    check(m_connection.handle(), sqlite3_bind_int(m_statement, parameter, number));
}

bool PlainStatement::next() {
    const int result = sqlite3_step(m_statement);
    check(m_connection.handle(), result);
    return result == SQLITE_ROW;
}

void PlainStatement::reset() {
    check(m_connection.handle(), sqlite3_reset(m_statement));
}

void PlainStatement::run() {
    while (next()) {
    }
    reset();
}

QString PlainStatement::text(int column) const {
    const void* text = sqlite3_column_text16(m_statement, column);
    const int bytes = sqlite3_column_bytes16(m_statement, column);
    return QString(static_cast<const QChar*>(text), bytes / 2);
}

QStringList rowsOf(const QString& file, const std::string& sql) {
    Plain connection(file);
    PlainStatement rows(connection, sql);
    QStringList result;
    while (rows.next()) {
        QStringList cells;
        for (int column = 0; column < sqlite3_column_count(rows.handle()); ++column)
            cells << rows.text(column);
        result << cells.join(u'|');
    }
    return result;
}

void requireSame(const QStringList& product, const QStringList& floor) {
    if (product == floor && !product.isEmpty())
        return;
    qsizetype at = 0;
    while (at < std::min(product.size(), floor.size()) && product.at(at) == floor.at(at))
        ++at;
    throw std::runtime_error(QStringLiteral("The two sides differ in row %1:\n%2\n%3")
                                 .arg(at)
                                 .arg(product.value(at), floor.value(at))
                                 .toStdString());
}

} // namespace tallyroom::bench
