#include "bench/BenchData.h"

#include "host/demo/DemoData.h"
#include "store/Recordset.h"
#include "store/Workspace.h"

#include <QDir>
#include <QFile>
#include <cstdio>
#include <stdexcept>

namespace tallyroom::bench {

namespace {

constexpr const char* files[] = {"aidb01.mdb", "vrlxdb01.mdb", "bcx.mdb"};

class Bucket : public LateBoundObject {
public:
    explicit Bucket(const QString& filter) {
        addProperty(QStringLiteral("employeefilter"),
                    [filter](const Arguments&) { return Variant(filter); });
    }
};

class NoPicture : public LateBoundObject {
public:
    NoPicture() {
        addProperty(QStringLiteral("Picture"), [](const Arguments&) { return Variant(); });
    }
};

QDate lastDate() {
    return {2026, 1, 1};
}

} // namespace

void makeData(const QString& place, int employees, int days) {
    host::DemoSettings settings;
    settings.folder = place;
    settings.employees = employees;
    settings.days = days;
    settings.end = lastDate();
    host::createDemoData(settings, [](int, int) {});
}

QString keptFolder(int employees, int days) {
    const QString folder =
        QStringLiteral(TALLYROOM_BENCH_DATA "/employees-%1-days-%2").arg(employees).arg(days);
    if (QFile::exists(folder)) {
        Workspace::completeFiles(folder); // an older build may have made it
        return folder;
    }
    std::fprintf(stderr, "Making data for %d employees...\n", employees);
    const QString unfinished = folder + QStringLiteral(".unfinished"); // by a run that was stopped
    QDir(unfinished).removeRecursively();
    makeData(unfinished, employees, days);
    if (!QDir().rename(unfinished, folder))
        throw std::runtime_error("the data could not be put in their place");
    return folder;
}

Date lastDay() {
    return Dates::fromQDate(lastDate());
}

QString fileIn(const QString& folder, const char* name) {
    return QDir(folder).filePath(QString::fromLatin1(name));
}

QString everybody(const QString& folder) {
    const auto employees = Workspace::openHostOptions(folder)->openRecordset(
        QStringLiteral("Select emp_code From Employee Order By emp_code"), RecordsetType::Snapshot);
    QStringList codes;
    for (; !employees->eof(); employees->moveNext())
        codes << employees->field(0).toText();
    return QStringLiteral("in ('") + codes.join(QStringLiteral("','")) + QStringLiteral("')");
}

HostContext hostOf(const QString& folder) {
    HostContext context;
    context.DataPath = folder;
    context.BucketForm = makeObject<Bucket>(everybody(folder));
    context.DatePickerForm = makeObject<NoPicture>();
    context.HostMenuForm = makeObject<NoPicture>();
    context.SplashPicture = makeObject<NoPicture>();
    return context;
}

void copyFolder(const QString& from, const QString& to) {
    QDir().mkpath(to);
    for (const char* name : files) {
        QFile::remove(fileIn(to, name));
        if (!QFile::copy(fileIn(from, name), fileIn(to, name)))
            throw std::runtime_error("cannot copy the data");
    }
}

} // namespace tallyroom::bench
