// What is not the same in a copy, as it is told to whoever copies: on the screen in short, and
// whole in a file.
#pragma once

#include <QSaveFile>
#include <QStringList>

namespace tallyroom::host {

class CopyReport {
public:
    // Raises 3204 when the file is there already, 3051 when it cannot be written.
    explicit CopyReport(const QString& path);

    struct Value {
        QString table;
        qint64 row = 0; // from 1, as they come
        QString key;    // the row's first value
        QString column;
        QString before;
        QString after;
        QString change;
    };
    void changed(const Value& value);
    // A row that is not in the copy.
    void leftOut(const QString& table, qint64 row, const QString& reason);
    // A column whose values are not copied, so many.
    void leftOut(const QString& table, const QString& column, qint64 values);
    // A table without any other column.
    void leftOut(const QString& table);
    // A table is through; the file itself says how many are in it.
    void table(const QString& name, qint64 read, qint64 written, qint64 inFile);

    void line(const QString& text);

    // The tables with their rows, and what is different as far as it is few.
    QStringList summary() const;

    // Raises 3051 or 3026 when it cannot be written; nothing is there then.
    void finish();
    QString path() const { return m_file.fileName(); }

private:
    void difference(const QString& text);

    QSaveFile m_file;
    QStringList m_tables;
    QStringList m_first; // differences
    qint64 m_differences = 0;
};

} // namespace tallyroom::host
