#include "host/copy/DataCopy.h"

#include "common/Counted.h"
#include "common/RunError.h"
#include "host/NewData.h"
#include "host/copy/CopiedTables.h"
#include "host/copy/TableCopy.h"
#include "store/Workspace.h"

#include <deque>

namespace tallyroom::host {

namespace {

std::shared_ptr<Database> openFile(const QString& dataPath, const Schema::File& file) {
    return Workspace::openDatabase(dataPath + u'\\' + QString::fromUtf16(file.name));
}

RunError different(const QString& table, qint64 expected, qint64 found) {
    return {ErrorNumber::damagedFile,
            QStringLiteral("%1: the copy has %2 rows where there are %3, or others. Nothing was "
                           "copied.")
                .arg(table, QString::number(found), QString::number(expected)),
            QStringLiteral("Brightclock")};
}

// A file as it stands in a folder or on a server.
class DatabaseSource final : public CopySource {
public:
    DatabaseSource(const QString& from, const Schema::File& file)
        : m_database(openFile(from, file)), m_reading(m_database, TransactionKind::Read),
          m_tables(m_database->tables()) {
        std::erase_if(m_tables,
                      [&](const TableFormat& table) { return isScratch(file, table.name); });
    }

    const std::vector<TableFormat>& tables() const override { return m_tables; }
    void readRows(const TableFormat& table, const TakeRows& take) override {
        m_database->readPortions(table.name, portion, take);
    }

private:
    static constexpr std::size_t portion = 5'000; // rows

    std::shared_ptr<Database> m_database;
    Transaction m_reading;
    std::vector<TableFormat> m_tables;
};

class CopiedFile {
public:
    explicit CopiedFile(const CopiedSource& copied)
        : m_file(copied.file), m_source(*copied.source) {}

    const std::vector<TableFormat>& tables() const { return m_source.tables(); }

    void writeTo(const QString& to, const CopyMessages& messages) {
        const auto target = openFile(to, m_file);
        Transaction writing(target, TransactionKind::Write);
        for (const TableFormat& table : tables())
            m_sums.push_back(
                copyTable(m_source, *target, table, progressOf(messages, "copied", table)));
        writing.commit();
    }

    // From the beginning, on a connection of its own where that is a file.
    void compareWith(const QString& to, const CopyMessages& messages) const {
        const auto target = openFile(to, m_file);
        for (std::size_t at = 0; at < tables().size(); ++at) {
            const TableFormat& table = tables()[at];
            const TableSum sum =
                sumOfTable(*target, table, progressOf(messages, "compared", table));
            if (sum != m_sums[at])
                throw different(table.name, m_sums[at].rows, sum.rows);
            messages.say(QStringLiteral("%1: %2, checksum %3")
                             .arg(table.name, counted(sum.rows, u"row", u"rows"),
                                  QString::fromLatin1(sum.checksum.toHex().left(shownDigits))));
        }
    }

private:
    static constexpr qsizetype shownDigits = 16;

    static RowProgress progressOf(const CopyMessages& messages, const char* what,
                                  const TableFormat& table) {
        const QString end = QStringLiteral(" rows ") + QString::fromLatin1(what);
        return [&messages, name = table.name, end](qint64 rows) {
            messages.progress(name + QStringLiteral(": ") + QString::number(rows) + end);
        };
    }

    const Schema::File& m_file;
    CopySource& m_source;
    std::vector<TableSum> m_sums; // of each table
};

} // namespace

void copyData(const QString& from, const QString& to, const CopyMessages& messages) {
    std::vector<CopiedSource> sources;
    for (const Schema::File& file : Schema::files())
        sources.push_back({file, std::make_unique<DatabaseSource>(from, file)});
    copySources(sources, to, messages);
}

void copySources(const std::vector<CopiedSource>& sources, const QString& to,
                 const CopyMessages& messages) {
    std::deque<CopiedFile> files;
    CopiedTables tables;
    for (const CopiedSource& source : sources) {
        const CopiedFile& copied = files.emplace_back(source);
        tables.add(source.file, copied.tables());
    }
    for (const QString& remark : tables.remarks())
        messages.say(remark);
    makeData(to, tables.files(), [&](const QString& made) {
        for (CopiedFile& file : files)
            file.writeTo(made, messages);
        for (const CopiedSource& source : sources)
            source.source->requireUnchanged();
        for (const CopiedFile& file : files)
            file.compareWith(made, messages);
    });
}

} // namespace tallyroom::host
