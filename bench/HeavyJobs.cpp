// What the heavy jobs cost beside what the engine and the toolkit allow. With arguments, only the
// jobs of these numbers: 1 to 7, g for growth, m for memory.
#include "bench/Jobs.h"
#include "bench/Measure.h"

#include <QApplication>
#include <QLoggingCategory>
#include <cstdio>

using namespace tallyroom;

namespace {

struct Job {
    char name;
    void (*run)();
};

constexpr Job jobs[] = {
    {'m', bench::memoryOfTheBoard},  {'1', bench::totalsOfTwoWeeks}, {'2', bench::totalsOfAllDates},
    {'3', bench::gridFill},          {'4', bench::recordingAnswers}, {'5', bench::openingTheWindow},
    {'6', bench::translatingTotals}, {'7', bench::fairnessOfAYear},  {'7', bench::checksOfAYear},
    {'g', bench::growthOfTotals},    {'g', bench::growthOfAnswers},  {'s', bench::costOfStanding}};

bool isWanted(char name, const QStringList& arguments) {
    return arguments.size() < 2 || arguments.contains(QString(QLatin1Char(name)));
}

} // namespace

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("default.warning=false")); // of the toolkit
    QApplication::setQuitOnLastWindowClosed(false);
    return bench::exitCodeOf([] {
        bench::printHeading();
        for (const Job& job : jobs) {
            if (isWanted(job.name, QApplication::arguments()))
                job.run();
        }
    });
}
