// Files of statements with what they must give. A line is one of
//   # a comment
//   in FILE                        the database that the lines below speak to
//   run STATEMENT                  executes it
//   ask STATEMENT                  opens it as a dynaset; lines that begin with "=" are its rows
//   copy STATEMENT                 likewise as a snapshot
//   fail NUMBER run|ask|copy ...   must raise that error
// "{folder}" in a statement stands for the data folder as the host writes it.
#include "tests/store/StoreFixture.h"

#include <QDir>

namespace tallyroom {

namespace {

class StatementRunner {
public:
    explicit StatementRunner(const QString& path) : m_path(path) {}

    void run() {
        QFile file(m_path);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly | QIODevice::Text));
        m_lines = QString::fromUtf8(file.readAll()).split(u'\n');
        for (m_line = 0; m_line < m_lines.size(); ++m_line) {
            const QString line = m_lines.at(m_line).trimmed();
            if (!line.isEmpty() && !line.startsWith(u'#'))
                runLine(line);
        }
        EXPECT_GT(m_statements, 0) << "no statements in the file";
    }

private:
    static QString rest(const QString& line) { return line.section(u' ', 1); }

    void runLine(const QString& line) {
        SCOPED_TRACE(QStringLiteral("%1:%2: %3")
                         .arg(m_path)
                         .arg(m_line + 1)
                         .arg(line.left(200))
                         .toStdString());
        if (line.startsWith(QLatin1String("in "))) {
            m_database = m_folder.open(rest(line).toStdU16String().c_str());
            return;
        }
        ++m_statements;
        int expected = 0;
        QString command = line;
        if (line.startsWith(QLatin1String("fail "))) {
            expected = rest(line).section(u' ', 0, 0).toInt();
            command = rest(rest(line));
        }
        std::optional<RunError> error;
        EXPECT_EQ(errorNumberOf([&] { perform(command); }, &error), expected)
            << (error ? error->what() : "no error");
    }

    void perform(const QString& command) {
        const QString verb = command.section(u' ', 0, 0);
        QString statement = rest(command);
        statement.replace(QLatin1String("{folder}"), hostPath(m_folder));
        if (verb == QLatin1String("run"))
            return m_database->execute(statement);
        if (verb != QLatin1String("ask") && verb != QLatin1String("copy"))
            FAIL() << "unknown command";
        const QStringList expected = expectedRows();
        const auto recordset = m_database->openRecordset(statement, verb == QLatin1String("ask")
                                                                        ? RecordsetType::Dynaset
                                                                        : RecordsetType::Snapshot);
        EXPECT_EQ(rowsOf(*recordset).join(u'\n').toStdString(), expected.join(u'\n').toStdString());
    }

    QStringList expectedRows() {
        QStringList rows;
        while (m_line + 1 < m_lines.size() && m_lines.at(m_line + 1).startsWith(u'='))
            rows << m_lines.at(++m_line).sliced(1).trimmed();
        return rows;
    }

    QString m_path;
    QStringList m_lines;
    qsizetype m_line = 0;
    int m_statements = 0;
    DataFolder m_folder;
    std::shared_ptr<Database> m_database;
};

TEST(Statements, GiveWhatTheFilesSay) {
    const QDir folder(QStringLiteral(STATEMENTS_FOLDER));
    const QStringList files = folder.entryList({QStringLiteral("*.txt")});
    EXPECT_FALSE(files.isEmpty());
    for (const QString& file : files)
        StatementRunner(folder.filePath(file)).run();
}

} // namespace

} // namespace tallyroom
