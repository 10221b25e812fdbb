#include "host/AddInModule.h"

#include "common/RunError.h"
#include "host/Options.h"

#include <QDir>
#include <QTemporaryFile>
#include <gtest/gtest.h>

namespace tallyroom::host {
namespace {

OptionsResult parse(const QString& line) {
    return parseOptions(QStringList{QStringLiteral("brightclock")} +
                        line.split(QLatin1Char(' '), Qt::SkipEmptyParts));
}

TEST(Options, RefusesWhatDoesNotFitTogether) {
    for (const char* line : {
             "--what",
             "stray",
             "--data",
             "--user jo",
             "--create-data d --user x",
             "--data d --employees 5",
             "--data d --create-data e",
             "--data d --open=",
             "--create-data d --employees 0",
             "--create-data d --employees many",
             "--create-data d --days 99999999",
             "--create-data d --end 31.3.2024",
             "--upgrade",
             "--report calls --date 2024-03-31",
             "--data d --report nothing",
             "--data d --report calls",
             "--data d --report calls --date 2024-03-31 --employee 1",
             "--data d --report calls --date 2024-03-31 --format pdf",
             "--data d --report calls --date 2024-03-31 --from 2024-03-31",
             "--data d --report standing --date 2024-03-31",
             "--data d --report fairness --by name",
         }) {
        const OptionsResult result = parse(QString::fromLatin1(line));
        EXPECT_FALSE(result.options) << line;
        EXPECT_FALSE(result.error.isEmpty()) << line;
    }
}

TEST(Options, ReadsBothCommands) {
    const auto create =
        parse(QStringLiteral("--create-data d --employees 5 --end 2024-02-29")).options;
    ASSERT_TRUE(create);
    EXPECT_EQ(create->command, Command::CreateData);
    EXPECT_EQ(create->demo.folder, QDir(QStringLiteral("d")).absolutePath());
    EXPECT_EQ(create->demo.employees, 5);
    EXPECT_EQ(create->demo.end, QDate(2024, 2, 29));

    const auto run = parse(QStringLiteral("--data d --select 1,2 --picture p.png")).options;
    ASSERT_TRUE(run);
    EXPECT_EQ(run->command, Command::Run);
    EXPECT_EQ(run->openEntry, QStringLiteral("TLYRShow"));
    EXPECT_EQ(*run->selection, QStringList({QStringLiteral("1"), QStringLiteral("2")}));
    EXPECT_TRUE(parse(QStringLiteral("--data d --select all")).options->selectsAll);

    const auto report =
        parse(QStringLiteral("--data d --report calls --date 2024-03-31 --out sheet.pdf")).options;
    ASSERT_TRUE(report);
    EXPECT_EQ(report->command, Command::Report);
    EXPECT_EQ(report->report.format, ReportFormat::Pdf);
    EXPECT_EQ(report->report.request.date, QDate(2024, 3, 31));

    const auto asked = parse(QStringLiteral("-style fusion -reverse -platform=vnc")).options;
    ASSERT_TRUE(asked);
    EXPECT_EQ(asked->dataFolder, QString());
}

TEST(AddInModule, SaysWhyAFileIsNoModule) {
    EXPECT_THROW(findModule(QStringLiteral("no-such-module.so")), RunError);
    QTemporaryFile file;
    ASSERT_TRUE(file.open());
    EXPECT_EQ(findModule(file.fileName()), file.fileName());
    for (const QString& name : {file.fileName(), QStringLiteral("libm.so.6")}) {
        try {
            const AddInModule module(name);
            ADD_FAILURE() << name.toStdString() << " was taken for a module";
        } catch (const RunError& error) {
            EXPECT_EQ(error.number(), ErrorNumber::cannotCreateObject);
            EXPECT_TRUE(error.description().contains(QFileInfo(name).fileName()));
        }
    }
}

} // namespace
} // namespace tallyroom::host
