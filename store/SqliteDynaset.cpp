#include "store/SqliteDynaset.h"

#include "store/FieldValue.h"
#include "store/SqliteGenerator.h"
#include "store/sql/StatementBinder.h"

#include <algorithm>
#include <sqlite3.h>

namespace tallyroom {

namespace {

[[noreturn]] void raise(int number) {
    throw RunError::make(number, {}, ErrorSource::recordset);
}

} // namespace

void SqliteDynaset::readRows() {
    m_keys.clear();
    SqliteQuery query(sqlite().connection(), generator().keys(bound()));
    while (query.next())
        m_keys.push_back(query.key(0));
    m_removed.assign(m_keys.size(), false);
    m_removedTotal = 0;
    m_positions.clear();
    m_rowText = generator().rowByKey(bound());
    m_updated.clear();
}

bool SqliteDynaset::isRemoved(int position) const {
    return m_removed[static_cast<std::size_t>(position)];
}

void SqliteDynaset::forgetRow() {
    m_pending.reset();
    m_rowRead = false;
}

const Row& SqliteDynaset::rowAt(int position) const {
    if (m_rowRead)
        return m_row;
    SqliteQuery query(sqlite().connection(), m_rowText);
    query.bind(1, m_keys[static_cast<std::size_t>(position)]);
    if (!query.next())
        raise(ErrorNumber::recordDeleted);
    m_row.clear();
    m_row.reserve(bound().columns.size());
    for (const sql::BoundColumn& column : bound().columns)
        m_row.push_back(query.value(static_cast<int>(m_row.size()), column.value->type));
    m_rowRead = true;
    return m_row;
}

void SqliteDynaset::beginChange(bool adding, Row row) {
    const std::size_t count = row.size();
    m_pending = Pending{adding, std::move(row), std::vector<bool>(count, false)};
}

// Somebody may have removed the row, which is reported here.
void SqliteDynaset::edit() {
    requireRow();
    forgetRow();
    beginChange(false, asRecordset([this] { return rowAt(position()); }));
}

void SqliteDynaset::addNew() {
    requireOpen();
    beginChange(true, Row(bound().columns.size(), Variant::null()));
}

void SqliteDynaset::setField(int position, const Variant& value) {
    requireOpen();
    requireField(position);
    if (!m_pending)
        raise(ErrorNumber::noEditPending);
    const auto index = static_cast<std::size_t>(position);
    const sql::BoundNode& column = *bound().columns[index].value;
    if (column.kind != sql::BoundKind::Column)
        throw RunError::make(ErrorNumber::fieldNotUpdatable, {}, ErrorSource::field);
    m_pending->row[index] = fieldValue(value, column.type, column.width);
    m_pending->changed[index] = true;
}

void SqliteDynaset::update() {
    requireOpen();
    if (!m_pending)
        raise(ErrorNumber::noEditPending);
    asRecordset([this] { m_pending->adding ? insertRow() : updateRow(); });
    forgetRow();
}

void SqliteDynaset::cancelUpdate() {
    requireOpen();
    if (!m_pending)
        raise(ErrorNumber::noEditPending);
    forgetRow();
}

QStringList SqliteDynaset::changedColumns() const {
    QStringList names;
    for (std::size_t i = 0; i < m_pending->row.size(); ++i) {
        if (m_pending->changed[i])
            names << bound().columns[i].value->column;
    }
    return names;
}

void SqliteDynaset::bindChanges(SqliteQuery& query) const {
    int parameter = 0;
    for (std::size_t i = 0; i < m_pending->row.size(); ++i) {
        if (m_pending->changed[i])
            query.bind(++parameter, m_pending->row[i]);
    }
}

// A new row of which nothing was set still needs one column to name, which stays Null.
void SqliteDynaset::insertRow() {
    QStringList names = changedColumns();
    if (names.isEmpty())
        names << table().columns.front().name;
    SqliteConnection& connection = sqlite().connection();
    SqliteQuery query(connection, generator().insertRow(table(), names));
    bindChanges(query);
    query.next();
    const bool atEnd = eof();
    appendKey(sqlite3_last_insert_rowid(connection.handle()));
    if (atEnd)
        leaveToEnd();
}

void SqliteDynaset::updateRow() {
    const QStringList names = changedColumns();
    if (names.isEmpty())
        return;
    if (m_updated != m_pending->changed) {
        m_updateText = generator().updateRow(table(), names);
        m_updated = m_pending->changed;
    }
    SqliteQuery query(sqlite().connection(), m_updateText);
    bindChanges(query);
    query.bind(static_cast<int>(names.size()) + 1, m_keys[static_cast<std::size_t>(position())]);
    query.next();
    if (changedRows() == 0)
        raise(ErrorNumber::recordDeleted);
}

void SqliteDynaset::appendKey(qint64 key) {
    if (!m_positions.isEmpty())
        m_positions.insert(key, rowTotal());
    m_keys.push_back(key);
    m_removed.push_back(false);
}

void SqliteDynaset::remove() {
    requireRow();
    forgetRow();
    const auto index = static_cast<std::size_t>(position());
    asRecordset([&] {
        SqliteQuery query(sqlite().connection(), generator().deleteRow(table()));
        query.bind(1, m_keys[index]);
        query.next();
        if (changedRows() == 0)
            raise(ErrorNumber::recordDeleted);
    });
    m_removed[index] = true;
    ++m_removedTotal;
    leaveRow();
}

int SqliteDynaset::changedRows() const {
    return sqlite3_changes(sqlite().connection().handle());
}

// The engine finds the matching rows of the table, by an index if it can; the first of the set
// among them is looked up by key.
int SqliteDynaset::findRow(const sql::Expression& criteria) {
    const sql::BoundPtr condition = sql::bindCriteria(sqlite().catalog(), bound(), criteria);
    SqliteQuery query(sqlite().connection(), generator().keysWhere(bound(), condition));
    indexKeys();
    int first = -1;
    while (query.next()) {
        const int position = positionOf(query.key(0));
        if (position >= 0 && (first < 0 || position < first))
            first = position;
    }
    return first;
}

void SqliteDynaset::indexKeys() {
    if (!m_positions.isEmpty())
        return;
    m_positions.reserve(static_cast<qsizetype>(m_keys.size()));
    for (std::size_t i = 0; i < m_keys.size(); ++i)
        m_positions.insert(m_keys[i], static_cast<int>(i));
}

// −1 for a row that is not in the set, or no longer.
int SqliteDynaset::positionOf(qint64 key) const {
    const auto found = m_positions.constFind(key);
    return found == m_positions.constEnd() || isRemoved(*found) ? -1 : *found;
}

} // namespace tallyroom
