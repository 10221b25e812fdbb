#include "tests/support/DataFolder.h"

#include "store/postgres/ServerAddress.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <stdexcept>

#ifdef TALLYROOM_SERVER
#include "tests/support/PostgresCluster.h"
#endif

namespace tallyroom {

QStringList textsOf(Recordset& rows) {
    QStringList lines;
    for (; !rows.eof(); rows.moveNext()) {
        QStringList cells;
        for (int at = 0; at < rows.fieldCount(); ++at)
            cells.append(rows.field(at).isNull() ? QStringLiteral("Null")
                                                 : rows.field(at).toText());
        lines.append(cells.join(QLatin1Char('|')));
    }
    return lines;
}

bool testsOnServer() {
    return qEnvironmentVariableIsSet("TALLYROOM_TESTS_ON_SERVER");
}

namespace {

#ifdef TALLYROOM_SERVER
const QString database = QStringLiteral("tests");

void executeOnServer(const QString& file, const QString& sql) {
    const QString schema = parseServerAddress(file).schema;
    PostgresCluster::shared().execute(
        database, QStringLiteral("SET search_path TO \"%1\"; %2").arg(schema, sql));
}
#else
[[noreturn]] void executeOnServer(const QString&, const QString&) {
    throw std::logic_error("the tests were built without support for servers");
}
#endif

} // namespace

#ifdef TALLYROOM_SERVER
QString newSite() {
    static int made = 0;
    PostgresCluster& cluster = PostgresCluster::shared();
    if (made == 0)
        cluster.createDatabase(database);
    return QStringLiteral("postgresql://postgres@/%1/site%2?host=%3")
        .arg(database)
        .arg(++made)
        .arg(cluster.folder());
}
#else
QString newSite() {
    executeOnServer({}, {});
}
#endif

DataFolder::DataFolder(bool onServer)
    : m_onServer(onServer), m_path(onServer ? newSite() : m_folder.path()) {
    Workspace::createFiles(m_path);
}

QString DataFolder::file(const char16_t* name) const {
    if (m_onServer)
        throw std::logic_error("a site has no files");
    return m_folder.filePath(QString::fromUtf16(name));
}

std::shared_ptr<Database> DataFolder::open(const char16_t* name) const {
    return Workspace::openDatabase(path() + QLatin1Char('\\') + QString::fromUtf16(name));
}

void DataFolder::execute(const char16_t* name, QStringView sql) const {
    open(name)->execute(sql.toString());
}

void DataFolder::executeNatively(const char16_t* name, const char* sql) const {
    if (m_onServer)
        return executeOnServer(path() + QLatin1Char('\\') + QString::fromUtf16(name),
                               QString::fromUtf8(sql));
    SQLite::Database(file(name).toStdString(), SQLite::OPEN_READWRITE).exec(sql);
}

QStringList DataFolder::rows(const char16_t* name, QStringView sql) const {
    return textsOf(*open(name)->openRecordset(sql.toString(), RecordsetType::Snapshot));
}

void DataFolder::addHost(int employees) const {
    const auto host = open(hostFile);
    host->execute(
        QStringLiteral("Insert Into [Shift] ([Shift_Code], [Shift_Rule_Num]) Values ('S1', '7');"));
    for (const char* code : {"OTA", "OTD", "OTA2", "OTD2"})
        host->execute(QStringLiteral("Insert Into [Absentee] ([absent_code], [absent_descr]) "
                                     "Values ('%1', 'Overtime %1');")
                          .arg(QString::fromLatin1(code)));
    for (int n = 1; n <= employees; ++n)
        host->execute(QStringLiteral("Insert Into [Employee] ([emp_code], [emp_name], [emp_dept], "
                                     "[phone], [emp_shift], [sendate], [Seniority]) Values "
                                     "('E%1', 'Name %1', 'D%2', '5551234567', 'S1', "
                                     "#1/%4/2001#, %3);")
                          .arg(n)
                          .arg(n % 3)
                          .arg(100 - n)
                          .arg((n - 1) % 31 + 1));
}

void DataFolder::addHistory(QStringView emp, QStringView shiftDate, double t15Minutes,
                            double t20Minutes, QStringView recordType) const {
    const auto rows = open(hostFile)->openRecordset(QStringLiteral("Select * from [TimeHistory];"),
                                                    RecordsetType::Dynaset);
    rows->addNew();
    rows->setField(QStringLiteral("thist_emp"), emp.toString());
    rows->setField(QStringLiteral("shift_date"), Variant(shiftDate.toString()).toDate());
    rows->setField(QStringLiteral("thist_record_type"), recordType.toString());
    rows->setField(QStringLiteral("t15"), t15Minutes / 1440);
    rows->setField(QStringLiteral("t20"), t20Minutes / 1440);
    rows->update();
}

void DataFolder::associateAll() const {
    execute(addInFile, QStringLiteral("Insert Into [tlyr_assoc] ([Accepted], [Declined], "
                                      "[Accepted2], [Declined2]) Values ('OTA', 'OTD', 'OTA2', "
                                      "'OTD2');"));
}

void DataFolder::setPeriod(QStringView from, QStringView to) const {
    execute(
        addInFile,
        QStringLiteral("Insert Into [tlyr_period] ([from_date], [to_date]) Values (#%1#, #%2#);")
            .arg(from, to));
}

} // namespace tallyroom
