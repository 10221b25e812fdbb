#include "host/demo/DemoData.h"

#include "common/RunError.h"
#include "host/NewData.h"
#include "host/demo/DemoHistory.h"
#include "host/demo/DemoSetup.h"
#include "store/Workspace.h"

namespace tallyroom::host {

namespace {

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
    makeData(settings.folder, Schema::files(), [&](const QString& dataPath) {
        if (!settings.bare)
            write(dataPath, settings, progress);
    });
}

} // namespace tallyroom::host
