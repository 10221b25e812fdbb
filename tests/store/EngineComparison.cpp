#include "tests/store/EngineComparison.h"

#include "common/TextOrder.h"
#include "tests/store/StoreFixture.h"

#include <algorithm>
#include <cmath>

namespace tallyroom {

namespace {

bool areClose(double left, double right) {
    return left == right ||
           std::abs(left - right) <= 1e-12 * std::max(std::abs(left), std::abs(right));
}

// Letter for letter, or in any spelling.
bool isEqual(const Variant& left, const Variant& right, bool isExact) {
    if (left.isNull() || right.isNull() || left.type() != right.type())
        return left.isNull() && right.isNull();
    if (left.type() == Variant::Type::Text)
        return isExact ? left.toText() == right.toText()
                       : TextOrder::isSame(left.toText(), right.toText());
    return areClose(left.toDouble(), right.toDouble());
}

bool areEqual(const Row& left, const Row& right, bool isExact, std::ptrdiff_t columns) {
    return std::equal(left.begin(), left.begin() + columns, right.begin(),
                      [=](const Variant& a, const Variant& b) { return isEqual(a, b, isExact); });
}

// Rows of a table one by one; others where they are ordered by their first columns, and else as a
// whole.
bool isSameAnswer(const std::vector<Row>& left, const std::vector<Row>& right,
                  const MadeQuery& query) {
    if (left.size() != right.size() || left.empty())
        return left.size() == right.size();
    const auto all = static_cast<std::ptrdiff_t>(left.front().size());
    const auto equal = [&](std::ptrdiff_t columns, bool isExact) {
        return [=](const Row& a, const Row& b) { return areEqual(a, b, isExact, columns); };
    };
    if (query.isTable)
        return std::equal(left.begin(), left.end(), right.begin(), equal(all, true));
    return std::equal(left.begin(), left.end(), right.begin(), equal(query.keys, false)) &&
           std::is_permutation(left.begin(), left.end(), right.begin(), equal(all, false));
}

QString shownRows(const std::vector<Row>& rows) {
    QString result;
    for (const Row& row : rows) {
        QStringList cells;
        for (const Variant& value : row)
            cells << shown(value);
        result += QStringLiteral("\n  ") + cells.join(QStringLiteral(" | "));
    }
    return result;
}

// What docs/store.md says of numbers beyond the engine's.
bool isKnown(int filesError, int serverError) {
    return filesError == 0 && serverError == ErrorNumber::overflow;
}

} // namespace

EngineComparison::EngineComparison() = default;

QString EngineComparison::difference(unsigned seed) {
    StatementMaker maker(seed);
    fill(maker);
    QString found = compareTables();
    for (int count = 0; count < 20 && found.isEmpty(); ++count)
        found = maker.upTo(4) == 0 ? compareChange(maker.change()) : compareQuery(maker.query());
    return found;
}

void EngineComparison::fill(StatementMaker& maker) {
    for (const MadeTable& table : madeTables()) {
        const std::vector<Row> rows = maker.rows(table);
        for (Database* database : {m_files.get(), m_server.get()})
            database->replaceRows(QString::fromUtf16(table.name), table.columns(), rows);
    }
}

EngineComparison::Answer EngineComparison::ask(Database& database, const QString& sql) const {
    Answer answer;
    try {
        const auto rows = database.openRecordset(sql, RecordsetType::Snapshot);
        for (; !rows->eof(); rows->moveNext()) {
            answer.rows.emplace_back();
            for (int at = 0; at < rows->fieldCount(); ++at)
                answer.rows.back().push_back(rows->field(at));
        }
    } catch (const RunError& error) {
        answer.error = error.number();
        answer.told = QString::fromUtf8(error.what());
    }
    return answer;
}

QString EngineComparison::compareQuery(const MadeQuery& query) {
    const Answer files = ask(*m_files, query.sql);
    const Answer server = ask(*m_server, query.sql);
    ++m_statements;
    m_refused += files.error != 0 && server.error != 0 ? 1 : 0;
    if (isKnown(files.error, server.error) ||
        (files.error == server.error && isSameAnswer(files.rows, server.rows, query)))
        return {};
    return query.sql + QStringLiteral("\nfiles: ") + files.told + shownRows(files.rows) +
           QStringLiteral("\nserver: ") + server.told + shownRows(server.rows);
}

// On neither engine, or with what is known to differ undone.
QString EngineComparison::compareChange(const QString& sql) {
    std::optional<RunError> reason;
    Transaction onFiles(m_files, TransactionKind::Write);
    Transaction onServer(m_server, TransactionKind::Write);
    const int files = errorNumberOf([&] { m_files->execute(sql); });
    const int server = errorNumberOf([&] { m_server->execute(sql); });
    ++m_statements;
    if (isKnown(files, server))
        return {};
    onFiles.commit();
    onServer.commit();
    m_refused += files != 0 && server != 0 ? 1 : 0;
    const QString found = files == server
                              ? compareTables()
                              : QStringLiteral("errors %1 and %2").arg(files).arg(server);
    return found.isEmpty() ? found : sql + u'\n' + found;
}

QString EngineComparison::compareTables() {
    for (const MadeTable& table : madeTables()) {
        QString found = compareQuery(
            {QStringLiteral("Select * From [%1]").arg(QString::fromUtf16(table.name)), 0, true});
        if (!found.isEmpty())
            return found;
    }
    return {};
}

} // namespace tallyroom
