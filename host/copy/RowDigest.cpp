#include "host/copy/RowDigest.h"

namespace tallyroom::host {

namespace {

constexpr char nothing = 'n';
constexpr char number = 'd';
constexpr char text = 't';

template<class Bits>
void append(QByteArray& bytes, char kind, Bits value) {
    bytes += kind;
    bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
}

// To the second, as it is kept: the fraction of a day is the nearest one.
qint64 secondOf(Date date) {
    constexpr double secondsOfDay = 86400;
    return qRound64(date.serial * secondsOfDay);
}

} // namespace

void RowDigest::add(const std::vector<Row>& rows) {
    m_bytes.clear();
    for (const Row& row : rows) {
        for (const Variant& value : row)
            add(value);
    }
    m_hash.addData(m_bytes);
    m_rows += static_cast<qint64>(rows.size());
}

// Both columns have the same type, but not all engines tell zero from minus zero.
void RowDigest::add(const Variant& value) {
    switch (value.type()) {
    case Variant::Type::Null:
        m_bytes += nothing;
        break;
    case Variant::Type::Text: {
        const QByteArray utf8 = value.toText().toUtf8();
        append(m_bytes, text, static_cast<qint64>(utf8.size()));
        m_bytes += utf8;
        break;
    }
    case Variant::Type::Date:
        append(m_bytes, number, secondOf(value.toDate()));
        break;
    default:
        append(m_bytes, number, value.toDouble() + 0.0);
    }
}

} // namespace tallyroom::host
