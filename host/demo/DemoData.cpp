#include "host/demo/DemoData.h"

#include "common/RunError.h"
#include "host/demo/DemoHistory.h"
#include "host/demo/DemoSetup.h"
#include "store/Workspace.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

namespace tallyroom::host {

namespace {

RunError notFree(const QString& folder) {
    return {ErrorNumber::fileExists,
            QStringLiteral("'%1' is there already and holds something; it was left as it is.")
                .arg(folder),
            QStringLiteral("Brightclock")};
}

void requireFree(const QString& folder) {
    const QFileInfo info(folder);
    const QDir::Filters everything = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;
    if (info.exists() && (!info.isDir() || !QDir(folder).isEmpty(everything)))
        throw notFree(folder);
}

void fill(Database& hostFile, Database& addInFile, const DemoSettings& settings,
          const DemoProgress& progress) {
    QRandomGenerator random(settings.seed);
    const std::vector<DemoPerson> people = makePeople(settings, random);
    loadPeople(hostFile, people);
    loadSchedule(hostFile, people, settings);
    loadHistory(hostFile, people, settings, random,
                [&](int done) { progress(done, settings.employees); });
    if (settings.firstRun)
        return;
    loadAnswers(hostFile, addInFile, people, settings, random);
    loadSetup(addInFile, settings);
}

void write(const QString& folder, const DemoSettings& settings, const DemoProgress& progress) {
    try {
        const auto hostFile = Workspace::openHostOptions(folder);
        const auto addInFile = Workspace::openAddIn(folder);
        Transaction hostRows(hostFile, TransactionKind::Write);
        Transaction addInRows(addInFile, TransactionKind::Write);
        fill(*hostFile, *addInFile, settings, progress);
        hostRows.commit();
        addInRows.commit();
    } catch (const RunError& error) {
        throw RunError(error.number(),
                       QStringLiteral("The data could not be written: %1").arg(error.description()),
                       QStringLiteral("Brightclock"));
    }
}

} // namespace

void createDemoData(const DemoSettings& settings, const DemoProgress& progress) {
    requireFree(settings.folder);
    const QFileInfo target(settings.folder);
    if (!QDir().mkpath(target.absolutePath()))
        throw RunError::make(ErrorNumber::invalidPath, {target.absolutePath()});
    // Made beside its place and moved there when it is complete.
    QTemporaryDir workshop(target.absoluteFilePath() + QStringLiteral(".XXXXXX"));
    if (!workshop.isValid())
        throw RunError::make(ErrorNumber::invalidPath, {settings.folder});
    const QString made = workshop.filePath(QStringLiteral("data"));
    QDir().mkdir(made);
    Workspace::createFiles(made);
    if (!settings.bare)
        write(made, settings, progress);
    QDir().rmdir(settings.folder); // an empty one makes room, another one stays
    if (!QDir().rename(made, settings.folder))
        throw notFree(settings.folder);
}

} // namespace tallyroom::host
