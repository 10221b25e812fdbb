#include "store/engine/Dynaset.h"

#include "store/engine/FieldValue.h"
#include "store/sql/StatementBinder.h"

namespace tallyroom {

namespace {

[[noreturn]] void raise(int number) {
    throw RunError::make(number, {}, ErrorSource::recordset);
}

} // namespace

void Dynaset::readRows() {
    m_table = engine().keyedRows(bound());
    m_keys = m_table->keys();
    m_removed.assign(m_keys.size(), false);
    m_removedTotal = 0;
    m_positions.clear();
}

bool Dynaset::isRemoved(int position) const {
    return m_removed[static_cast<std::size_t>(position)];
}

void Dynaset::forgetRow() {
    m_pending.reset();
    m_rowRead = false;
}

const Row& Dynaset::rowAt(int position) const {
    if (m_rowRead)
        return m_row;
    auto row = m_table->read(m_keys[static_cast<std::size_t>(position)]);
    if (!row)
        raise(ErrorNumber::recordDeleted);
    m_row = std::move(*row);
    m_rowRead = true;
    return m_row;
}

void Dynaset::beginChange(bool adding, Row row) {
    const std::size_t count = row.size();
    m_pending = Pending{adding, std::move(row), std::vector<bool>(count, false)};
}

// Somebody may have removed the row, which is reported here.
void Dynaset::edit() {
    requireRow();
    forgetRow();
    beginChange(false, asRecordset([this] { return rowAt(position()); }));
}

void Dynaset::addNew() {
    requireOpen();
    beginChange(true, Row(bound().columns.size(), Variant::null()));
}

void Dynaset::setField(int position, const Variant& value) {
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

void Dynaset::update() {
    requireOpen();
    if (!m_pending)
        raise(ErrorNumber::noEditPending);
    asRecordset([this] { m_pending->adding ? insertRow() : updateRow(); });
    forgetRow();
}

void Dynaset::cancelUpdate() {
    requireOpen();
    if (!m_pending)
        raise(ErrorNumber::noEditPending);
    forgetRow();
}

QStringList Dynaset::changedColumns() const {
    QStringList names;
    for (std::size_t i = 0; i < m_pending->row.size(); ++i) {
        if (m_pending->changed[i])
            names << bound().columns[i].value->column;
    }
    return names;
}

Row Dynaset::changedValues() const {
    Row values;
    for (std::size_t i = 0; i < m_pending->row.size(); ++i) {
        if (m_pending->changed[i])
            values.push_back(m_pending->row[i]);
    }
    return values;
}

// A new row of which nothing was set still needs one column to name, which stays Null.
void Dynaset::insertRow() {
    QStringList names = changedColumns();
    Row values = changedValues();
    if (names.isEmpty()) {
        names << table().columns.front().name;
        values.push_back(Variant::null());
    }
    const bool atEnd = eof();
    appendKey(m_table->insert(names, values));
    if (atEnd)
        leaveToEnd();
}

void Dynaset::updateRow() {
    const QStringList names = changedColumns();
    if (names.isEmpty())
        return;
    if (!m_table->update(m_keys[static_cast<std::size_t>(position())], names, changedValues()))
        raise(ErrorNumber::recordDeleted);
}

void Dynaset::appendKey(qint64 key) {
    if (!m_positions.isEmpty())
        m_positions.insert(key, rowTotal());
    m_keys.push_back(key);
    m_removed.push_back(false);
}

void Dynaset::remove() {
    requireRow();
    forgetRow();
    const auto index = static_cast<std::size_t>(position());
    asRecordset([&] {
        if (!m_table->remove(m_keys[index]))
            raise(ErrorNumber::recordDeleted);
    });
    m_removed[index] = true;
    ++m_removedTotal;
    leaveRow();
}

// The engine finds the matching rows of the table, by an index if it can; the first of the set
// among them is looked up by key.
int Dynaset::findRow(const sql::Expression& criteria) {
    const sql::BoundPtr condition = sql::bindCriteria(engine().catalog(), bound(), criteria);
    const std::vector<qint64> found = m_table->find(condition);
    indexKeys();
    int first = -1;
    for (const qint64 key : found) {
        const int position = positionOf(key);
        if (position >= 0 && (first < 0 || position < first))
            first = position;
    }
    return first;
}

void Dynaset::indexKeys() {
    if (!m_positions.isEmpty())
        return;
    m_positions.reserve(static_cast<qsizetype>(m_keys.size()));
    for (std::size_t i = 0; i < m_keys.size(); ++i)
        m_positions.insert(m_keys[i], static_cast<int>(i));
}

// −1 for a row that is not in the set, or no longer.
int Dynaset::positionOf(qint64 key) const {
    const auto found = m_positions.constFind(key);
    return found == m_positions.constEnd() || isRemoved(*found) ? -1 : *found;
}

} // namespace tallyroom
