#include "store/SqliteDynaset.h"

#include "store/FieldValue.h"
#include "store/sql/Generator.h"
#include "store/sql/StatementBinder.h"
#include "store/sql/UpdateChain.h"

#include <algorithm>
#include <sqlite3.h>

namespace tallyroom {

namespace {

sql::Generator generator() {
    return sql::Generator(sql::sqliteDialect());
}

[[noreturn]] void raise(int number) {
    throw RunError::make(number, {}, ErrorSource::recordset);
}

} // namespace

void SqliteDynaset::readRows() {
    m_keys.clear();
    m_keysBatch = sqlite().batchNumber();
    SqliteQuery query(sqlite().connection(), generator().keys(bound()));
    while (query.next())
        m_keys.push_back(query.key(0));
    m_removed.assign(m_keys.size(), false);
    m_removedTotal = 0;
    m_positions.clear();
    m_rowText = generator().rowByKey(bound());
    m_firstText.clear();
    m_updated.clear();
}

bool SqliteDynaset::isRemoved(int position) const {
    return m_removed[static_cast<std::size_t>(position)];
}

void SqliteDynaset::forgetRow() {
    m_pending.reset();
    m_rowRead = false;
    m_first.reset();
}

const Row& SqliteDynaset::rowAt(int position) const {
    if (m_rowRead)
        return m_row;
    SqliteQuery query(sqlite().connection(), m_rowText);
    find(query, position);
    m_row.clear();
    m_row.reserve(bound().columns.size());
    for (const sql::BoundColumn& column : bound().columns)
        m_row.push_back(query.value(static_cast<int>(m_row.size()), column.value->type));
    m_rowRead = true;
    m_first.reset(); // one state of the row, not two
    return m_row;
}

void SqliteDynaset::find(SqliteQuery& query, int position) const {
    query.bind(1, m_keys[static_cast<std::size_t>(position)]);
    if (!query.next())
        raise(ErrorNumber::recordDeleted);
}

// In the batch in which the keys were read nobody else has changed or removed a row.
bool SqliteDynaset::isGuarded() const {
    return m_keysBatch != 0 && m_keysBatch == sqlite().batchNumber();
}

// While the rows are guarded, the first value of one is read by itself: who merges looks at one and
// passes on.
Variant SqliteDynaset::valueAt(int position, std::size_t column) const {
    if (m_first && m_first->column == column)
        return m_first->value;
    if (m_rowRead || m_first || !isGuarded())
        return rowAt(position)[column];
    if (m_firstText.isEmpty() || m_firstColumn != column) {
        m_firstText = generator().valueByKey(bound(), column);
        m_firstColumn = column;
    }
    SqliteQuery query(sqlite().connection(), m_firstText);
    find(query, position);
    m_first = FirstValue{column, query.value(0, bound().columns[column].value->type)};
    return m_first->value;
}

void SqliteDynaset::beginChange(bool adding) {
    const std::size_t count = bound().columns.size();
    m_pending =
        Pending{adding, adding, Row(count, Variant::null()), std::vector<bool>(count, false)};
}

// Somebody may have removed a row that is not guarded, which is reported here.
void SqliteDynaset::edit() {
    requireRow();
    forgetRow();
    if (!isGuarded())
        asRecordset([this] { rowAt(position()); });
    beginChange(false);
}

void SqliteDynaset::addNew() {
    requireOpen();
    beginChange(true);
}

const Row* SqliteDynaset::pendingRow() const {
    if (!m_pending)
        return nullptr;
    if (!m_pending->complete) {
        const Row& stored = asRecordset([this]() -> const Row& { return rowAt(position()); });
        for (std::size_t i = 0; i < stored.size(); ++i) {
            if (!m_pending->changed[i])
                m_pending->row[i] = stored[i];
        }
        m_pending->complete = true;
    }
    return &m_pending->row;
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
    m_expected.clear();
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

std::vector<sql::BoundAssignment> SqliteDynaset::changesAsParameters() const {
    std::vector<sql::BoundAssignment> result;
    for (std::size_t i = 0; i < m_pending->row.size(); ++i) {
        if (!m_pending->changed[i])
            continue;
        auto node = std::make_shared<sql::BoundNode>(*bound().columns[i].value);
        node->kind = sql::BoundKind::Parameter;
        node->parameter = static_cast<int>(result.size()) + 1;
        result.push_back({node->column, node});
    }
    return result;
}

void SqliteDynaset::expectUpdates(const QStringList& updates) {
    requireOpen();
    const auto isOurs = [this](const sql::BoundUpdate& update) {
        return update.target.table->name == table().name;
    };
    m_expected.clear();
    m_updated.clear();
    std::vector<sql::BoundUpdate> bound = sqlite().boundUpdates(updates);
    if (isGuarded() && std::all_of(bound.begin(), bound.end(), isOurs))
        m_expected = std::move(bound);
}

QString SqliteDynaset::updateText(int keyParameter) {
    const std::vector<sql::BoundAssignment> changes = changesAsParameters();
    const auto all = sql::followed(changes, m_expected);
    if (!all)
        m_expected.clear();
    return generator().updateRow(table(), all.value_or(changes), keyParameter);
}

void SqliteDynaset::updateRow() {
    const auto count =
        static_cast<int>(std::count(m_pending->changed.begin(), m_pending->changed.end(), true));
    if (count == 0)
        return m_expected.clear();
    if (m_updated != m_pending->changed) {
        m_updateText = updateText(count + 1);
        m_updated = m_pending->changed;
    }
    SqliteQuery query(sqlite().connection(), m_updateText);
    bindChanges(query);
    query.bind(count + 1, m_keys[static_cast<std::size_t>(position())]);
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
