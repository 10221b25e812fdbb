#include "store/engine/EngineRecordset.h"

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

EngineRecordset::EngineRecordset(std::shared_ptr<EngineDatabase> database, RecordsetQuery query,
                                 sql::BoundSelect bound)
    : m_database(std::move(database)), m_query(std::move(query)), m_bound(std::move(bound)) {}

void EngineRecordset::requireOpen() const {
    if (m_closed)
        raise(ErrorNumber::objectInvalid);
    asRecordset([this] { m_database->requireOpen(); });
}

void EngineRecordset::requireRow() const {
    requireOpen();
    if (m_onRow)
        return;
    const bool removedHere = m_position >= 0 && m_position < rowTotal() && isRemoved(m_position);
    raise(removedHere ? ErrorNumber::recordDeleted : ErrorNumber::noCurrentRecord);
}

bool EngineRecordset::bof() const {
    requireOpen();
    return m_position < 0 || (rowCount() == 0 && m_position >= rowTotal());
}

bool EngineRecordset::eof() const {
    requireOpen();
    return m_position >= rowTotal() || (rowCount() == 0 && m_position < 0);
}

int EngineRecordset::rowCount() const {
    requireOpen();
    return rowTotal() - removedTotal();
}

// Takes the first row at or after the position, or at or before it, that has not been removed.
void EngineRecordset::moveTo(int position, int step) {
    forgetRow();
    while (position >= 0 && position < rowTotal() && isRemoved(position))
        position += step;
    m_position = position;
    m_onRow = position >= 0 && position < rowTotal();
}

void EngineRecordset::leaveToEnd() {
    m_position = rowTotal();
    m_onRow = false;
}

void EngineRecordset::moveFirst() {
    if (rowCount() == 0)
        raise(ErrorNumber::noCurrentRecord);
    moveTo(0, 1);
}

void EngineRecordset::moveLast() {
    if (rowCount() == 0)
        raise(ErrorNumber::noCurrentRecord);
    moveTo(rowTotal() - 1, -1);
}

void EngineRecordset::moveNext() {
    if (eof())
        raise(ErrorNumber::noCurrentRecord);
    moveTo(m_position + 1, 1);
}

void EngineRecordset::movePrevious() {
    if (bof())
        raise(ErrorNumber::noCurrentRecord);
    moveTo(m_position - 1, -1);
}

int EngineRecordset::fieldPosition(const QString& name) const {
    requireOpen();
    for (std::size_t i = 0; i < m_bound.columns.size(); ++i) {
        if (m_bound.columns[i].name.compare(name, Qt::CaseInsensitive) == 0)
            return static_cast<int>(i);
    }
    throw RunError::make(ErrorNumber::itemNotFound, {}, ErrorSource::fields);
}

void EngineRecordset::requireField(int position) const {
    if (position < 0 || position >= static_cast<int>(m_bound.columns.size()))
        throw RunError::make(ErrorNumber::itemNotFound, {}, ErrorSource::fields);
}

Variant EngineRecordset::field(const QString& name) const {
    return field(fieldPosition(name));
}

Variant EngineRecordset::field(int position) const {
    requireOpen();
    requireField(position);
    const auto index = static_cast<std::size_t>(position);
    if (const Row* pending = pendingRow())
        return (*pending)[index];
    if (!m_onRow)
        requireRow();
    return asRecordset([&] { return rowAt(m_position)[index]; });
}

int EngineRecordset::fieldCount() const {
    requireOpen();
    return static_cast<int>(m_bound.columns.size());
}

QString EngineRecordset::fieldName(int position) const {
    requireOpen();
    requireField(position);
    return m_bound.columns[static_cast<std::size_t>(position)].name;
}

void EngineRecordset::edit() {
    requireOpen();
    raise(ErrorNumber::readOnly);
}

void EngineRecordset::addNew() {
    requireOpen();
    raise(ErrorNumber::readOnly);
}

void EngineRecordset::setField(const QString& name, const Variant& value) {
    setField(fieldPosition(name), value);
}

void EngineRecordset::setField(int position, const Variant&) {
    requireOpen();
    requireField(position);
    raise(ErrorNumber::noEditPending);
}

void EngineRecordset::update() {
    requireOpen();
    raise(ErrorNumber::noEditPending);
}

void EngineRecordset::cancelUpdate() {
    requireOpen();
    raise(ErrorNumber::noEditPending);
}

void EngineRecordset::remove() {
    requireOpen();
    raise(ErrorNumber::readOnly);
}

void EngineRecordset::findFirst(const QString& criteria) {
    requireOpen();
    forgetRow();
    const int found = asRecordset([&] { return findRow(*sql::parseCriteria(criteria)); });
    m_noMatch = found < 0;
    m_onRow = !m_noMatch;
    if (!m_noMatch)
        m_position = found;
}

bool EngineRecordset::noMatch() const {
    requireOpen();
    return m_noMatch;
}

void EngineRecordset::setSort(const QString& sort) {
    requireOpen();
    m_sort = sort;
}

std::shared_ptr<Recordset> EngineRecordset::openRecordset() {
    requireOpen();
    return asRecordset([this] {
        RecordsetQuery query = m_query;
        if (!m_sort.trimmed().isEmpty())
            query.sort =
                std::make_shared<const std::vector<sql::OrderItem>>(sql::parseSort(m_sort));
        return m_database->open(query);
    });
}

void EngineRecordset::start() {
    forgetRow();
    readRows();
    m_noMatch = false;
    moveTo(0, 1);
}

void EngineRecordset::requery() {
    requireOpen();
    asRecordset([this] {
        m_bound = m_database->bind(m_query);
        start();
    });
}

void EngineRecordset::close() {
    requireOpen();
    forgetRow();
    m_closed = true;
}

std::shared_ptr<Database> EngineRecordset::database() const {
    return m_database;
}

} // namespace tallyroom
