#include "tests/support/OldFileWriter.h"

#include <QtEndian>
#include <array>
#include <numeric>

namespace tallyroom {

using namespace host;

namespace {

// Source of all places and forms: HACKING.md of mdbtools.
constexpr int pageSize = 4096;
constexpr quint32 catalogPage = 2;

template<class Number>
QByteArray le(Number number) {
    QByteArray bytes(sizeof number, Qt::Uninitialized);
    qToLittleEndian(number, bytes.data());
    return bytes;
}

QByteArray utf16(const QString& text) {
    QByteArray bytes;
    for (const QChar each : text)
        bytes += le(quint16(each.unicode()));
    return bytes;
}

struct Form {
    quint8 type;
    quint16 size; // in a row; 0 for those that vary
};

Form formOf(OldType type) {
    switch (type) {
    case OldType::Boolean:
        return {1, 0}; // the mark of Null holds the value
    case OldType::Whole:
        return {4, 4};
    case OldType::Single:
        return {6, 4};
    case OldType::Double:
        return {7, 8};
    case OldType::Decimal:
        return {5, 8};
    case OldType::Date:
        return {8, 8};
    case OldType::Text:
        return {10, 0};
    case OldType::Memo:
        return {12, 0};
    case OldType::Guid:
        return {15, 16};
    case OldType::Binary:
        return {9, 0};
    }
    return {};
}

bool isFixed(const OldColumn& column) {
    return column.type == OldType::Boolean || formOf(column.type).size > 0;
}

bool isMarked(const OldValue& value) {
    const bool* flag = std::get_if<bool>(&value);
    return flag ? *flag : !std::holds_alternative<std::monostate>(value);
}

// Over the file's first page.
void cipher(QByteArray& bytes, qsizetype from, qsizetype size) {
    constexpr std::array<quint8, 4> key{0xC7, 0xDA, 0x39, 0x6B};
    std::array<quint8, 256> state;
    std::iota(state.begin(), state.end(), quint8(0));
    quint8 j = 0;
    for (std::size_t i = 0; i < state.size(); ++i) {
        j = quint8(j + state[i] + key[i % key.size()]);
        std::swap(state[i], state[j]);
    }
    quint8 i = 0;
    j = 0;
    for (qsizetype at = from; at < from + size; ++at) {
        ++i;
        j = quint8(j + state[i]);
        std::swap(state[i], state[j]);
        bytes[at] = char(quint8(bytes[at]) ^ state[quint8(state[i] + state[j])]);
    }
}

} // namespace

OldFileWriter::OldFileWriter() {
    while (newPage() != catalogPage)
        continue;
}

quint32 OldFileWriter::newPage() {
    m_pages.append(pageSize, '\0');
    return quint32(m_pages.size() / pageSize) - 1;
}

void OldFileWriter::put(quint32 page, int place, const QByteArray& bytes) {
    m_pages.replace(qsizetype(page) * pageSize + place, bytes.size(), bytes);
}

// A page with this row alone, which is reached from elsewhere.
quint32 OldFileWriter::putRow(quint32 definition, const QByteArray& row) {
    constexpr quint16 reached = 0x8000;
    const quint32 page = newPage();
    put(page, 0, QByteArray::fromHex("01010000") + le(definition));
    put(page, 12, le(quint16(1)) + le(quint16((pageSize - row.size()) | reached)));
    put(page, pageSize - int(row.size()), row);
    return page;
}

QByteArray OldFileWriter::memo(const QString& text) {
    constexpr quint32 isInline = 0x80000000;
    constexpr quint32 isInOneRow = 0x40000000;
    const QByteArray bytes = utf16(text);
    const auto size = quint32(bytes.size());
    if (m_isScattered)
        return le(size | isInOneRow) + le(putRow(0, bytes) << 8) + QByteArray(4, '\0');
    return le(size | isInline) + QByteArray(8, '\0') + bytes;
}

QByteArray OldFileWriter::bytesOf(const OldValue& value, OldType type) {
    switch (type) {
    case OldType::Boolean:
        break;
    case OldType::Whole:
        return le(std::get<qint32>(value));
    case OldType::Single:
        return le(float(std::get<double>(value)));
    case OldType::Double:
        return le(std::get<double>(value));
    case OldType::Date:
        return le(std::get<Date>(value).serial);
    case OldType::Decimal:
        return le(
            qint64(std::get<OldDecimal>(value).digits.split(u'.').join(QString()).toLongLong()));
    case OldType::Text:
        return utf16(std::get<QString>(value));
    case OldType::Memo:
        return memo(std::get<QString>(value));
    case OldType::Guid:
        return QByteArray::fromHex(std::get<QString>(value).toLatin1());
    case OldType::Binary:
        return std::get<QByteArray>(value);
    }
    return {};
}

// The fixed values, the others, where each of those begins, and which are there.
QByteArray OldFileWriter::rowBytes(const OldTable& table, const OldRow& row) {
    QByteArray bytes = le(quint16(row.size()));
    QByteArray marks((qsizetype(row.size()) + 7) / 8, '\0');
    for (std::size_t at = 0; at < row.size(); ++at) {
        const OldColumn& column = table.columns[at];
        if (isMarked(row[at]))
            marks[qsizetype(at / 8)] = char(marks[qsizetype(at / 8)] | (1 << (at % 8)));
        if (isFixed(column))
            bytes += std::holds_alternative<std::monostate>(row[at])
                         ? QByteArray(formOf(column.type).size, '\0')
                         : bytesOf(row[at], column.type);
    }
    QByteArray places;
    quint16 varying = 0;
    for (std::size_t at = 0; at < row.size(); ++at) {
        if (isFixed(table.columns[at]))
            continue;
        ++varying;
        places.prepend(le(quint16(bytes.size())));
        if (!std::holds_alternative<std::monostate>(row[at]))
            bytes += bytesOf(row[at], table.columns[at].type);
    }
    return bytes + le(quint16(bytes.size())) + places + le(varying) + marks;
}

void OldFileWriter::addTable(const OldTable& table, const std::vector<OldRow>& rows) {
    constexpr qint32 isTable = 1;
    const quint32 definition = newPage();
    define(addRows(definition, table, rows), table, qsizetype(rows.size()));
    m_entries.push_back({table.name, definition, isTable});
}

void OldFileWriter::addLink(const QString& name) {
    constexpr qint32 isLink = 6;
    m_entries.push_back({name, 0, isLink});
}

// Rows lie at the end of their page, the first last.
OldFileWriter::Stored OldFileWriter::addRows(quint32 definition, const OldTable& table,
                                             const std::vector<OldRow>& rows) {
    constexpr int head = 14;
    constexpr int isElsewhere = 0x4000;
    Stored stored{definition, {}};
    int count = 0;
    int end = 0;
    for (const OldRow& row : rows) {
        QByteArray bytes = rowBytes(table, row);
        if (m_isScattered)
            bytes = le(putRow(definition, bytes) << 8);
        if (end - int(bytes.size()) < head + 2 * (count + 1)) {
            stored.pages.push_back(newPage());
            put(stored.pages.back(), 0, QByteArray::fromHex("01010000") + le(definition));
            count = 0;
            end = pageSize;
        }
        end -= int(bytes.size());
        put(stored.pages.back(), end, bytes);
        put(stored.pages.back(), head + 2 * count,
            le(quint16(m_isScattered ? end | isElsewhere : end)));
        put(stored.pages.back(), head - 2, le(quint16(++count)));
    }
    return stored;
}

void OldFileWriter::define(const Stored& stored, const OldTable& table, qsizetype rows) {
    QByteArray columns;
    QByteArray names;
    quint16 fixedPlace = 0;
    quint16 varying = 0;
    for (std::size_t at = 0; at < table.columns.size(); ++at) {
        const OldColumn& column = table.columns[at];
        const Form form = formOf(column.type);
        const bool fixed = isFixed(column);
        QByteArray entry(25, '\0');
        entry[0] = char(form.type);
        entry.replace(5, 2, le(quint16(at)));
        entry.replace(7, 2, le(varying));
        entry.replace(9, 2, le(quint16(at)));
        entry[15] = char(fixed ? 3 : 2);
        entry.replace(21, 2, le(fixed ? fixedPlace : quint16(0)));
        entry.replace(23, 2, le(fixed ? form.size : quint16(column.width * 2)));
        columns += entry;
        names += le(quint16(column.name.size() * 2)) + utf16(column.name);
        fixedPlace = quint16(fixedPlace + form.size);
        varying = quint16(varying + (fixed ? 0 : 1));
    }
    put(stored.definition, 0, QByteArray::fromHex("0201"));
    put(stored.definition, 16, le(quint32(rows)));
    put(stored.definition, 43, le(varying) + le(quint16(table.columns.size())));
    const quint32 map = addUsageMap(stored.pages) << 8;
    put(stored.definition, 55, le(map) + le(map));
    put(stored.definition, 63, columns + names);
}

// A row with a bit for each page of the file.
quint32 OldFileWriter::addUsageMap(const std::vector<quint32>& pages) {
    constexpr int size = 4000; // bytes of bits
    const quint32 first = pages.empty() ? 0 : pages.front();
    QByteArray bits(size, '\0');
    for (const quint32 page : pages) {
        const qsizetype at = page - first;
        bits[at / 8] = char(bits[at / 8] | (1 << (at % 8)));
    }
    const QByteArray row = QByteArray(1, '\0') + le(first) + bits;
    const quint32 page = newPage();
    put(page, 0, QByteArray::fromHex("0101"));
    put(page, 12, le(quint16(1)) + le(quint16(pageSize - row.size())));
    put(page, pageSize - int(row.size()), row);
    return page;
}

QByteArray OldFileWriter::header() const {
    QByteArray page(pageSize, '\0');
    page.replace(0, 20, QByteArray("\0\1\0\0Standard Jet DB", 19) + '\0');
    page[0x14] = 1;
    if (m_isEncrypted)
        page.replace(0x3e, 4, "key!");
    if (m_hasPassword)
        page.replace(0x42, 2, utf16(QStringLiteral("p")));
    cipher(page, 0x18, 128);
    return page;
}

QByteArray OldFileWriter::bytes() const {
    const OldTable catalog{QStringLiteral("MSysObjects"),
                           {{QStringLiteral("Id"), OldType::Whole},
                            {QStringLiteral("Name"), OldType::Text, 64},
                            {QStringLiteral("Type"), OldType::Whole},
                            {QStringLiteral("Flags"), OldType::Whole},
                            {QStringLiteral("LvProp"), OldType::Binary}}};
    std::vector<OldRow> rows;
    for (const Entry& entry : m_entries)
        rows.push_back({qint32(entry.page), entry.name, entry.type, qint32(0), {}});
    OldFileWriter whole(*this);
    whole.m_isScattered = false;
    whole.define(whole.addRows(catalogPage, catalog, rows), catalog, qsizetype(rows.size()));
    whole.put(0, 0, header());
    return whole.m_pages;
}

} // namespace tallyroom
