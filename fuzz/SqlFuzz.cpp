// Statements, criteria and orders. Each runs or is refused; what is refused does not reach the
// engine, and what runs can be undone.
#include "fuzz/Fuzz.h"
#include "store/Recordset.h"
#include "store/SqlText.h"
#include "store/Workspace.h"

#include <QTemporaryDir>

using namespace tallyroom;

namespace {

class Files {
public:
    Files() {
        Workspace::createFiles(m_folder.path());
        database = Workspace::openHostOptions(m_folder.path());
        for (const char16_t* code : {u"E1", u"e2", u"\u00c9"})
            database->execute(QStringLiteral("Insert Into Employee (emp_code, emp_name, Seniority)"
                                             " Values ('%1', 'Ann', 1.5)")
                                  .arg(QString::fromUtf16(code)));
    }
    std::shared_ptr<Recordset> employees() const {
        return database->openRecordset(QStringLiteral("Employee"), RecordsetType::Dynaset);
    }

    std::shared_ptr<Database> database;

private:
    QTemporaryDir m_folder;
};

template<class Command>
void tryOut(const Command& command) {
    require(errorOf(command) != ErrorNumber::internalError, "the engine refuses nothing");
}

void readAll(Recordset& rows) {
    for (; !rows.eof(); rows.moveNext()) {
        for (int at = 0; at < rows.fieldCount(); ++at)
            rows.field(at);
    }
}

void tryText(Database& database, const QString& text) {
    QString literal;
    if (errorOf([&] { literal = SqlText::literal(text); }) != 0)
        return;
    const auto row =
        database.openRecordset(QStringLiteral("Select ") + literal, RecordsetType::Snapshot);
    require(row->field(0).toText() == text, "a text stands for itself");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Files files;
    Database& database = *files.database;
    const QString text = QString::fromUtf8(bytesOf(data, size));
    for (const RecordsetType type : {RecordsetType::Dynaset, RecordsetType::Snapshot})
        tryOut([&] { readAll(*database.openRecordset(text, type)); });
    tryOut([&] { files.employees()->findFirst(text); });
    tryOut([&] {
        const auto rows = files.employees();
        rows->setSort(text);
        readAll(*rows->openRecordset());
    });
    tryOut([&] {
        const Transaction undone(files.database, TransactionKind::Write);
        database.execute(text);
    });
    require(files.employees()->rowCount() == 3, "what is left is undone");
    tryText(database, text);
    return 0;
}
