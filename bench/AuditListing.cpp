// How long the audit details window takes to list its entries, beside reading the same rows through
// the engine's own interface, and how both grow.
#include "audit/frmTLYRAuditDetails.h"
#include "bench/Measure.h"
#include "common/RunError.h"
#include "store/Workspace.h"

#include <QApplication>
#include <QTemporaryDir>
#include <QTimer>
#include <SQLiteCpp/SQLiteCpp.h>
#include <SQLiteCpp/VariadicBind.h>
#include <cstdio>
#include <vector>

using namespace tallyroom;

namespace {

constexpr int employees = 300;
constexpr int rounds = 3;

class EverybodyBucket : public LateBoundObject {
public:
    EverybodyBucket() {
        addProperty(QStringLiteral("employeefilter"),
                    [](const Arguments&) { return Variant(u"<> NULL"); });
    }
};

class NoPicture : public LateBoundObject {
public:
    NoPicture() {
        addProperty(QStringLiteral("Picture"), [](const Arguments&) { return Variant(); });
    }
};

std::string fileIn(const QTemporaryDir& folder, const char* name) {
    return folder.filePath(QString::fromLatin1(name)).toStdString();
}

std::string text(const char* pattern, int number) {
    return QString::fromLatin1(pattern).arg(number).toStdString();
}

void fillEmployees(const QTemporaryDir& folder) {
    SQLite::Database database(fileIn(folder, "bcx.mdb"), SQLite::OPEN_READWRITE);
    SQLite::Transaction transaction(database);
    SQLite::Statement insert(database, "INSERT INTO Employee (emp_code, emp_name) VALUES (?, ?)");
    for (int n = 0; n < employees; ++n) {
        SQLite::bind(insert, text("E%1", n), text("Employee number %1", n));
        insert.exec();
        insert.reset();
    }
    transaction.commit();
}

void fillAudit(const QTemporaryDir& folder, int entries) {
    SQLite::Database database(fileIn(folder, "aidb01.mdb"), SQLite::OPEN_READWRITE);
    SQLite::Transaction transaction(database);
    SQLite::Statement insert(
        database, "INSERT INTO TLYR_Audit (Now, User, Emp_Code, Date, Action, OT, tHistField) "
                  "VALUES (datetime('2020-01-01', ?), 'Ann', ?, '2020-02-03 00:00:00', ?, ?, "
                  "'tlyrAccepted')");
    for (int n = 0; n < entries; ++n) {
        SQLite::bind(insert, text("+%1 minutes", n), text("E%1", n * 7 % employees), n % 3,
                     n % 1440);
        insert.exec();
        insert.reset();
    }
    transaction.commit();
}

void listInWindow(const HostContext& context) {
    AuditSelection selection;
    selection.users = {QStringLiteral("Ann")};
    frmTLYRAuditDetails window(
        context, [] { return false; }, [selection] { return selection; });
    QTimer::singleShot(0, &window, &QDialog::reject);
    window.showModally();
}

long readBare(const QTemporaryDir& folder) {
    SQLite::Database database(fileIn(folder, "aidb01.mdb"), SQLite::OPEN_READONLY);
    SQLite::Statement rows(database, "SELECT * FROM TLYR_Audit WHERE User IN ('Ann') AND Action "
                                     "IN (0, 1, 2) ORDER BY Now, Emp_Code");
    long length = 0;
    while (rows.executeStep()) {
        for (int column = 0; column < rows.getColumnCount(); ++column)
            length += rows.getColumn(column).size();
    }
    return length;
}

void measure(int entries) {
    const QTemporaryDir folder;
    Workspace::createFiles(folder.path());
    fillEmployees(folder);
    fillAudit(folder, entries);
    HostContext context;
    context.DataPath = folder.path();
    context.BucketForm = makeObject<EverybodyBucket>();
    context.SplashPicture = makeObject<NoPicture>();
    std::vector<double> windowTimes;
    std::vector<double> bareTimes;
    for (int round = 0; round < rounds; ++round) {
        windowTimes.push_back(bench::seconds([&] { listInWindow(context); }));
        bareTimes.push_back(bench::seconds([&] { readBare(folder); }));
    }
    const double shown = bench::median(windowTimes);
    const double bare = bench::median(bareTimes);
    std::printf("%9d %11.3f s %11.3f s %8.1f %12.2f µs\n", entries, shown, bare, shown / bare,
                shown / entries * 1e6);
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    std::puts("Audit details window: listing all entries (median of 3)");
    std::puts("  entries      window      bare read    ratio    window/entry");
    try {
        for (const int entries : {12500, 25000, 50000, 100000})
            measure(entries);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
