// Files in the old desktop engine's format of the year 2000, made up for tests: enough of it to be
// read. No indexes; a row fits a page.
#pragma once

#include "host/oldfiles/OldValue.h"

#include <QByteArray>

namespace tallyroom {

class OldFileWriter {
public:
    OldFileWriter();

    // Values are of their columns' types. Whole numbers take four bytes, decimals are currency.
    void addTable(const host::OldTable& table, const std::vector<host::OldRow>& rows);
    // Rows of later tables lie on pages of their own, and so do their memos.
    void scatter() { m_isScattered = true; }
    // A table that lies in another file.
    void addLink(const QString& name);

    void setPassword() { m_hasPassword = true; }
    void setEncrypted() { m_isEncrypted = true; }

    QByteArray bytes() const;

private:
    struct Entry {
        QString name;
        quint32 page; // of its definition
        qint32 type;
    };
    struct Stored {
        quint32 definition;
        std::vector<quint32> pages; // of its rows
    };

    quint32 newPage();
    void put(quint32 page, int place, const QByteArray& bytes);
    quint32 putRow(quint32 definition, const QByteArray& row);
    QByteArray memo(const QString& text);
    QByteArray bytesOf(const host::OldValue& value, host::OldType type);
    QByteArray rowBytes(const host::OldTable& table, const host::OldRow& row);
    Stored addRows(quint32 definition, const host::OldTable& table,
                   const std::vector<host::OldRow>& rows);
    void define(const Stored& stored, const host::OldTable& table, qsizetype rows);
    quint32 addUsageMap(const std::vector<quint32>& pages);
    QByteArray header() const;

    QByteArray m_pages;
    std::vector<Entry> m_entries;
    bool m_isScattered = false;
    bool m_hasPassword = false;
    bool m_isEncrypted = false;
};

} // namespace tallyroom
