#include "host/oldfiles/CopyReport.h"

#include "common/Counted.h"
#include "common/RunError.h"

#include <QFileInfo>

namespace tallyroom::host {

namespace {

constexpr qsizetype mostShown = 20; // differences on the screen

} // namespace

CopyReport::CopyReport(const QString& path) : m_file(path) {
    if (QFileInfo::exists(path))
        throw RunError(ErrorNumber::fileExists,
                       QStringLiteral("'%1', where the report goes, is there already.").arg(path),
                       QStringLiteral("Brightclock"));
    if (!m_file.open(QIODevice::WriteOnly))
        throw RunError(ErrorNumber::cannotOpenFile,
                       QStringLiteral("'%1', where the report goes, cannot be written: %2.")
                           .arg(path, m_file.errorString()),
                       QStringLiteral("Brightclock"));
}

void CopyReport::changed(const Value& value) {
    difference(QStringLiteral("%1, row %2 (%3), %4: %5 became %6 (%7)")
                   .arg(value.table, QString::number(value.row), value.key, value.column,
                        value.before, value.after, value.change));
}

void CopyReport::leftOut(const QString& table, qint64 row, const QString& reason) {
    difference(QStringLiteral("%1, row %2: left out, %3").arg(table, QString::number(row), reason));
}

void CopyReport::leftOut(const QString& table, const QString& column, qint64 values) {
    difference(QStringLiteral("%1, %2: pictures, objects and bytes are left out, %3 of them")
                   .arg(table, column, QString::number(values)));
}

void CopyReport::leftOut(const QString& table) {
    difference(QStringLiteral("%1: left out, it has no columns but pictures, objects and bytes")
                   .arg(table));
}

void CopyReport::difference(const QString& text) {
    ++m_differences;
    if (m_first.size() < mostShown)
        m_first << text;
    line(text);
}

void CopyReport::table(const QString& name, qint64 read, qint64 written, qint64 inFile) {
    QString text = QStringLiteral("%1: %2 read, %3 written")
                       .arg(name, counted(read, u"row", u"rows"), QString::number(written));
    if (inFile != read)
        text += QStringLiteral(" (the file itself counts %1)").arg(inFile);
    m_tables << text;
}

void CopyReport::line(const QString& text) {
    m_file.write(text.toUtf8() + '\n');
}

QStringList CopyReport::summary() const {
    QStringList lines = m_tables;
    if (m_differences == 0)
        return lines << QStringLiteral("Every value is as it was.");
    lines << QStringLiteral("Not the same in the copy: %1").arg(m_differences) << m_first;
    if (m_differences > m_first.size())
        lines << QStringLiteral("… and %1 more, in the report").arg(m_differences - m_first.size());
    return lines;
}

void CopyReport::finish() {
    if (!m_file.commit())
        throw RunError(ErrorNumber::cannotOpenFile,
                       QStringLiteral("The copy is complete, but its report '%1' could not be "
                                      "written: %2.")
                           .arg(m_file.fileName(), m_file.errorString()),
                       QStringLiteral("Brightclock"));
}

} // namespace tallyroom::host
