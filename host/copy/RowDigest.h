// Telling whether two tables have the same rows.
#pragma once

#include "store/Database.h"

#include <QCryptographicHash>

namespace tallyroom::host {

struct TableSum {
    qint64 rows = 0;
    QByteArray checksum; // of all values in the order of the rows
    friend bool operator==(const TableSum&, const TableSum&) = default;
};

class RowDigest {
public:
    void add(const std::vector<Row>& rows);
    TableSum sum() const { return {m_rows, m_hash.result()}; }

private:
    void add(const Variant& value);

    QCryptographicHash m_hash{QCryptographicHash::Blake2b_160};
    QByteArray m_bytes;
    qint64 m_rows = 0;
};

} // namespace tallyroom::host
