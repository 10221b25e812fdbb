#include "host/oldfiles/reader/MdbRows.h"

#include <QtEndian>
#include <algorithm>
#include <array>

namespace tallyroom::host {

namespace {

// Where a page says that a row begins. Source: HACKING.md of mdbtools, "Data Pages".
constexpr int offsetMask = 0x1fff;
constexpr int isElsewhere = 0x4000; // four bytes: the page and row where it lies
constexpr int isDeleted = 0x8000;   // or is reached through such a place

constexpr std::size_t portion = 5'000;         // rows
constexpr qsizetype portionSize = 1024 * 1024; // bytes

// Bytes of a value of a fixed type; nothing for those that vary.
int fixedSize(int type) {
    switch (type) {
    case MDB_BYTE:
        return 1;
    case MDB_INT:
        return 2;
    case MDB_LONGINT:
    case MDB_FLOAT:
        return 4;
    case MDB_DOUBLE:
    case MDB_MONEY:
    case MDB_DATETIME:
        return 8;
    case MDB_REPID:
        return 16;
    case MDB_NUMERIC:
        return 17;
    default:
        return 0;
    }
}

qsizetype sizeOf(const OldValue& value) {
    const auto* text = std::get_if<QString>(&value);
    const auto* bytes = std::get_if<QByteArray>(&value);
    return text ? text->size() * 2 : bytes ? bytes->size() : 0;
}

// The page that was read last in the place of the current one, while this lives. A copy, for a memo
// takes a page as well.
class PageAside {
public:
    explicit PageAside(MdbHandle& mdb) : m_mdb(mdb) {
        std::ranges::copy(mdb.pg_buf, m_page.begin());
        std::ranges::copy(mdb.alt_pg_buf, mdb.pg_buf);
    }
    ~PageAside() { std::ranges::copy(m_page, m_mdb.pg_buf); }
    PageAside(const PageAside&) = delete;
    PageAside& operator=(const PageAside&) = delete;

private:
    MdbHandle& m_mdb;
    std::array<uchar, MDB_PGSIZE> m_page;
};

} // namespace

MdbRows::MdbRows(MdbTableDef& table, const MdbTexts& texts)
    : m_table(table), m_mdb(*table.entry->mdb), m_texts(texts), m_fields(table.num_cols) {}

void MdbRows::read(const TakeOldRows& take) {
    m_take = &take;
    mdb_rewind_table(&m_table);
    while (mdb_read_next_dpg(&m_table) != 0)
        readPage();
    flush();
}

void MdbRows::readPage() {
    constexpr int slotSize = 2;
    const int head = m_mdb.fmt->row_count_offset;
    const int count = mdb_get_int16(m_mdb.pg_buf, head);
    if (head + slotSize * (count + 1) > int(m_mdb.fmt->pg_size))
        refuse(QStringLiteral("a page claims more rows than it can hold"));
    for (int at = 0; at < count; ++at)
        addRow(at);
}

void MdbRows::addRow(int at) {
    int start = 0;
    std::size_t size = 0;
    const bool isSound = mdb_find_row(&m_mdb, at, &start, &size) == 0;
    if ((start & isDeleted) != 0)
        return;
    if (!isSound || size == 0)
        refuse(QStringLiteral("a row cannot be found"));
    if ((start & isElsewhere) != 0)
        addContinuedRow(start & offsetMask, size);
    else
        addRowOfPage(start & offsetMask, size);
}

void MdbRows::addContinuedRow(int start, std::size_t size) {
    const int pageSize = int(m_mdb.fmt->pg_size);
    if (size < sizeof(quint32) || start + int(sizeof(quint32)) > pageSize)
        refuse(QStringLiteral("a row's continuation cannot be found"));
    const auto place = qFromLittleEndian<qint32>(m_mdb.pg_buf + start);
    void* page = nullptr;
    int there = 0;
    std::size_t length = 0;
    if (mdb_find_pg_row(&m_mdb, place, &page, &there, &length) != 0 || length == 0)
        refuse(QStringLiteral("a row's continuation cannot be found"));
    const PageAside aside(m_mdb);
    addRowOfPage(there, length);
}

void MdbRows::addRowOfPage(int start, std::size_t size) {
    if (start + qint64(size) > m_mdb.fmt->pg_size ||
        mdb_crack_row(&m_table, start, size, m_fields.data()) < 0)
        refuse(QStringLiteral("a row cannot be read"));
    OldRow row;
    for (guint at = 0; at < m_table.num_cols; ++at)
        row.push_back(value(m_fields[at], *elementOf<MdbColumn>(m_table.columns, at)));
    for (const OldValue& each : row)
        m_size += sizeOf(each);
    m_rows.push_back(std::move(row));
    if (m_rows.size() >= portion || m_size >= portionSize)
        flush();
}

OldValue MdbRows::value(const MdbField& field, const MdbColumn& column) const {
    if (column.col_type == MDB_BOOL)
        return field.is_null == 0; // the mark of Null holds the value
    if (field.is_null != 0)
        return {};
    const int fixed = fixedSize(column.col_type);
    if (field.start < 0 || field.siz < 0 || field.start + qint64(field.siz) > m_mdb.fmt->pg_size ||
        (fixed != 0 && field.siz != fixed))
        refuse(QStringLiteral("a value lies outside its row"));
    if (fixed != 0)
        return fixedValue(field.start, column);
    const QByteArray bytes(reinterpret_cast<const char*>(m_mdb.pg_buf) + field.start, field.siz);
    try {
        if (column.col_type == MDB_TEXT)
            return m_texts.text(bytes);
        if (column.col_type == MDB_MEMO)
            return m_texts.memo(bytes);
    } catch (const OldFileRefused& refused) {
        refuse(QStringLiteral("column %1: ").arg(QString::fromUtf8(column.name)) +
               refused.text.chopped(1));
    }
    return bytes;
}

OldValue MdbRows::fixedValue(int start, const MdbColumn& column) const {
    uchar* page = m_mdb.pg_buf;
    switch (column.col_type) {
    case MDB_BYTE:
        return qint32(page[start]);
    case MDB_INT:
        return qint32(qFromLittleEndian<qint16>(page + start));
    case MDB_LONGINT:
        return qFromLittleEndian<qint32>(page + start);
    case MDB_FLOAT:
        return double(qFromLittleEndian<float>(page + start));
    case MDB_DOUBLE:
        return qFromLittleEndian<double>(page + start);
    case MDB_DATETIME:
        return Date{qFromLittleEndian<double>(page + start)};
    case MDB_MONEY:
        return OldDecimal{QString::fromLatin1(MdbText(mdb_money_to_string(&m_mdb, start)).get())};
    case MDB_NUMERIC:
        return OldDecimal{QString::fromLatin1(
            MdbText(mdb_numeric_to_string(&m_mdb, start, column.col_scale, column.col_prec))
                .get())};
    default:
        return QString::fromLatin1(MdbText(mdb_uuid_to_string(page, start)).get());
    }
}

void MdbRows::flush() {
    if (!m_rows.empty())
        (*m_take)(m_rows);
    m_rows.clear();
    m_size = 0;
}

void MdbRows::refuse(const QString& what) const {
    throw OldFileRefused{
        OldRefusal::Damaged,
        QStringLiteral("table %1: %2.").arg(QString::fromUtf8(m_table.name), what)};
}

} // namespace tallyroom::host
