#include "store/SqliteRecordset.h"

#include "store/sql/Parser.h"

namespace tallyroom {

namespace {

[[noreturn]] void raise(int number) {
    throw RunError::make(number, {}, ErrorSource::recordset);
}

} // namespace

RunError recordsetError(const RunError& error) {
    return error.source() == ErrorSource::database ? withSource(error, ErrorSource::recordset)
                                                   : error;
}

SqliteRecordset::SqliteRecordset(std::shared_ptr<SqliteDatabase> database, RecordsetQuery query,
                                 sql::BoundSelect bound)
    : m_database(std::move(database)), m_query(std::move(query)), m_bound(std::move(bound)) {}

void SqliteRecordset::requireOpen() const {
    if (m_closed)
        raise(ErrorNumber::objectInvalid);
    if (!m_database->isOpen())
        asRecordset([this] { m_database->connection(); });
}

void SqliteRecordset::requireRow() const {
    requireOpen();
    if (m_onRow)
        return;
    const bool removedHere = m_position >= 0 && m_position < rowTotal() && isRemoved(m_position);
    raise(removedHere ? ErrorNumber::recordDeleted : ErrorNumber::noCurrentRecord);
}

bool SqliteRecordset::bof() const {
    requireOpen();
    return m_position < 0 || (rowCount() == 0 && m_position >= rowTotal());
}

bool SqliteRecordset::eof() const {
    requireOpen();
    return m_position >= rowTotal() || (rowCount() == 0 && m_position < 0);
}

int SqliteRecordset::rowCount() const {
    requireOpen();
    return rowTotal() - removedTotal();
}

// Takes the first row at or after the position, or at or before it, that has not been removed.
void SqliteRecordset::moveTo(int position, int step) {
    forgetRow();
    while (position >= 0 && position < rowTotal() && isRemoved(position))
        position += step;
    m_position = position;
    m_onRow = position >= 0 && position < rowTotal();
}

void SqliteRecordset::leaveToEnd() {
    m_position = rowTotal();
    m_onRow = false;
}

void SqliteRecordset::moveFirst() {
    if (rowCount() == 0)
        raise(ErrorNumber::noCurrentRecord);
    moveTo(0, 1);
}

void SqliteRecordset::moveLast() {
    if (rowCount() == 0)
        raise(ErrorNumber::noCurrentRecord);
    moveTo(rowTotal() - 1, -1);
}

void SqliteRecordset::moveNext() {
    if (eof())
        raise(ErrorNumber::noCurrentRecord);
    moveTo(m_position + 1, 1);
}

void SqliteRecordset::movePrevious() {
    if (bof())
        raise(ErrorNumber::noCurrentRecord);
    moveTo(m_position - 1, -1);
}

int SqliteRecordset::fieldPosition(const QString& name) const {
    requireOpen();
    for (std::size_t i = 0; i < m_bound.columns.size(); ++i) {
        if (m_bound.columns[i].name.compare(name, Qt::CaseInsensitive) == 0)
            return static_cast<int>(i);
    }
    throw RunError::make(ErrorNumber::itemNotFound, {}, ErrorSource::fields);
}

void SqliteRecordset::requireField(int position) const {
    if (position < 0 || position >= static_cast<int>(m_bound.columns.size()))
        throw RunError::make(ErrorNumber::itemNotFound, {}, ErrorSource::fields);
}

Variant SqliteRecordset::field(const QString& name) const {
    return field(fieldPosition(name));
}

Variant SqliteRecordset::field(int position) const {
    requireOpen();
    requireField(position);
    const auto index = static_cast<std::size_t>(position);
    if (const Row* pending = pendingRow())
        return (*pending)[index];
    if (!m_onRow)
        requireRow();
    return asRecordset([&] { return rowAt(m_position)[index]; });
}

int SqliteRecordset::fieldCount() const {
    requireOpen();
    return static_cast<int>(m_bound.columns.size());
}

QString SqliteRecordset::fieldName(int position) const {
    requireOpen();
    requireField(position);
    return m_bound.columns[static_cast<std::size_t>(position)].name;
}

void SqliteRecordset::edit() {
    requireOpen();
    raise(ErrorNumber::readOnly);
}

void SqliteRecordset::addNew() {
    requireOpen();
    raise(ErrorNumber::readOnly);
}

void SqliteRecordset::setField(const QString& name, const Variant& value) {
    setField(fieldPosition(name), value);
}

void SqliteRecordset::setField(int position, const Variant&) {
    requireOpen();
    requireField(position);
    raise(ErrorNumber::noEditPending);
}

void SqliteRecordset::update() {
    requireOpen();
    raise(ErrorNumber::noEditPending);
}

void SqliteRecordset::cancelUpdate() {
    requireOpen();
    raise(ErrorNumber::noEditPending);
}

void SqliteRecordset::remove() {
    requireOpen();
    raise(ErrorNumber::readOnly);
}

void SqliteRecordset::findFirst(const QString& criteria) {
    requireOpen();
    forgetRow();
    const int found = asRecordset([&] { return findRow(*sql::parseCriteria(criteria)); });
    m_noMatch = found < 0;
    m_onRow = !m_noMatch;
    if (!m_noMatch)
        m_position = found;
}

bool SqliteRecordset::noMatch() const {
    requireOpen();
    return m_noMatch;
}

void SqliteRecordset::setSort(const QString& sort) {
    requireOpen();
    m_sort = sort;
}

std::shared_ptr<Recordset> SqliteRecordset::openRecordset() {
    requireOpen();
    return asRecordset([this] {
        RecordsetQuery query = m_query;
        if (!m_sort.trimmed().isEmpty())
            query.sort =
                std::make_shared<const std::vector<sql::OrderItem>>(sql::parseSort(m_sort));
        return m_database->open(query);
    });
}

void SqliteRecordset::start() {
    forgetRow();
    readRows();
    m_noMatch = false;
    moveTo(0, 1);
}

void SqliteRecordset::requery() {
    requireOpen();
    asRecordset([this] {
        m_bound = m_database->bind(m_query);
        start();
    });
}

void SqliteRecordset::close() {
    requireOpen();
    forgetRow();
    m_closed = true;
}

std::shared_ptr<Database> SqliteRecordset::database() const {
    return m_database;
}

} // namespace tallyroom
