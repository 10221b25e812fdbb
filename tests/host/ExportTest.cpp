#include "common/RunError.h"
#include "reports/ReportFile.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace tallyroom {
namespace {

// Captions that no sheet may be called by, and all kinds of values.
Report everyKind() {
    Report report;
    report.title = QStringLiteral("History");
    report.details = {QStringLiteral("Order: =up")};
    const auto at = [](int hour) {
        return Dates::fromQDateTime(QDateTime(QDate(2024, 3, 31), QTime(hour, 5)));
    };
    report.tables.push_back({QStringLiteral("a/b: [a 'long' name of a table]"),
                             {{QStringLiteral("Mon\n3/25")},
                              {QStringLiteral("Day"), ValueKind::Day},
                              {QStringLiteral("When"), ValueKind::Moment},
                              {QStringLiteral("At"), ValueKind::TimeOfDay},
                              {QStringLiteral("Box"), ValueKind::Text, false, 9, true},
                              {QStringLiteral("Time"), ValueKind::Minutes},
                              {QStringLiteral("No."), ValueKind::Number}},
                             {{u"=1+1", at(0), at(14), at(7), Variant::null(), 1575, 7},
                              {u" \uFF1D1, \"x\"\ny\x01\t\xFFFE", Variant::null(), Variant::null(),
                               Variant::null(), Variant::null(), -90, 0.5},
                              {u"\u00C7elik \U0001F600", Variant::null(), Variant::null(),
                               Variant::null(), Variant::null(), Variant::null(), u"-2"}}});
    report.tables.push_back({QStringLiteral("A b   a long name of a table, and more"),
                             {{QStringLiteral("Empty")}},
                             {}});
    report.charts.push_back(
        {QStringLiteral("Weeks"), Chart::Kind::Line, {{QStringLiteral("one"), 60.4}}, 90.0});
    report.notes = {QStringLiteral("@note")};
    return report;
}

// What a Python program prints of the report's file; "" where the program finds no such library.
QJsonArray readBack(ReportFormat format, const QByteArray& program) {
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("report.xlsx"));
    ReportFile::write(everyKind(), format, file, QStringLiteral("jo"));
    QProcess python;
    python.start(QStringLiteral("/usr/bin/python3"), // Debian's, which has the library
                 {QStringLiteral("-c"), QString::fromUtf8(program), file});
    python.waitForFinished();
    EXPECT_EQ(python.readAllStandardError().toStdString(), "");
    return QJsonDocument::fromJson(python.readAllStandardOutput()).array();
}

QString line(const QJsonValue& row) {
    QStringList cells;
    for (const QJsonValue& cell : row.toArray())
        cells << cell.toString();
    return cells.join(QLatin1Char('|'));
}

TEST(Export, AnotherProgramReadsTheCommaSeparatedValues) {
    const QJsonArray rows = readBack(ReportFormat::Csv, R"(
import csv, json, sys
print(json.dumps(list(csv.reader(open(sys.argv[1], newline='', encoding='utf-8-sig')))))
)");
    const QString expected[] = {
        QStringLiteral("a/b: [a 'long' name of a table]"),
        QStringLiteral("Mon 3/25|Day|When|At|Time|No."),
        QStringLiteral("'=1+1|2024-03-31|2024-03-31 14:05|07:05|26:15|7"),
        QStringLiteral("' \uFF1D1, \"x\"\r\ny ||||-01:30|0.5"),
        QStringLiteral("\u00C7elik \U0001F600|||||'-2"),
        QString(),
        QStringLiteral("A b   a long name of a table, and more"),
        QStringLiteral("Empty"),
        QString(),
        QStringLiteral("Weeks"),
        QStringLiteral("|Time"),
        QStringLiteral("one|01:00"),
        QStringLiteral("Mean|01:30"),
        QString(),
        QStringLiteral("'@note"),
    };
    ASSERT_EQ(rows.size(), static_cast<qsizetype>(std::size(expected)));
    for (qsizetype at = 0; at < rows.size(); ++at)
        EXPECT_EQ(line(rows[at]), expected[at]);
}

TEST(Export, AnotherProgramReadsTheWorkbook) {
    const QJsonArray sheets = readBack(ReportFormat::Workbook, R"(
import json, re, sys
try:
    import openpyxl
except ImportError:
    sys.exit()
def shown(cell):
    if isinstance(cell.value, str):
        return re.sub('^Printed .* by', 'Printed by', cell.value)
    return '' if cell.value is None else f'{cell.value} {cell.number_format}'
def read(sheet):
    rows = [[shown(cell) for cell in row] for row in sheet]
    return [sheet.title, str(sheet.freeze_panes)] + ['|'.join(row).rstrip('|') for row in rows]
book = openpyxl.load_workbook(sys.argv[1])
print(json.dumps([read(sheet) for sheet in book]))
)");
    if (sheets.isEmpty())
        GTEST_SKIP() << "python3-openpyxl is not installed";
    const QString head = QStringLiteral("|A6|History|Order: =up|Printed by jo||");
    const QString expected[] = {
        QStringLiteral("a b a long name of a table") + head +
            QStringLiteral("Mon 3/25|Day|When|At|Time|No.|"
                           "=1+1|2024-03-31 00:00:00 mm/dd/yyyy|"
                           "2024-03-31 14:05:00 mm/dd/yyyy hh:mm|07:05:00 hh:mm|"
                           "1 day, 2:15:00 [hh]:mm|7 General|"
                           " \uFF1D1, \"x\"\ny ||||-1 day, 22:30:00 [hh]:mm;-[hh]:mm|0.5 General|"
                           "\u00C7elik \U0001F600|||||-2"),
        QStringLiteral("A b a long name of a table, and") + head + QStringLiteral("Empty"),
        QStringLiteral("Weeks") + head +
            QStringLiteral("|Time|one|1:00:00 [hh]:mm|Mean|1:30:00 [hh]:mm"),
        QStringLiteral("Notes|None|History|Order: =up|Printed by jo||@note")};
    ASSERT_EQ(sheets.size(), static_cast<qsizetype>(std::size(expected)));
    for (qsizetype at = 0; at < sheets.size(); ++at)
        EXPECT_EQ(line(sheets[at]), expected[at]);
}

TEST(Export, WhatCannotBeWrittenLeavesWhatWasThere) {
    const QTemporaryDir folder;
    const QString taken = folder.filePath(QStringLiteral("taken")); // a folder is no file
    QDir().mkpath(taken + QStringLiteral("/inside"));
    for (const QString& name : ReportFile::formatNames()) {
        try {
            ReportFile::write(everyKind(), *ReportFile::formatNamed(name), taken, QString());
            ADD_FAILURE() << name.toStdString();
        } catch (const RunError& error) {
            EXPECT_EQ(error.number(), ErrorNumber::cannotOpenFile);
            EXPECT_TRUE(error.description().contains(taken));
        }
    }
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries),
              QStringList(QStringLiteral("taken")));
}

TEST(Export, SaysWhyItReplacesNothingUnasked) {
    const QTemporaryDir folder;
    const QString first = folder.filePath(QStringLiteral("sheet.png"));
    const QString second = folder.filePath(QStringLiteral("sheet-2.png"));
    Report report = everyKind();
    report.notes.insert(0, 200, QStringLiteral("A line of the second page"));
    const auto write = [&](const QString& file) {
        try {
            ReportFile::write(report, *ReportFile::formatOf(file), file, QString());
        } catch (const RunError& error) {
            return error.description();
        }
        return QString();
    };
    QFile other(second);
    ASSERT_TRUE(other.open(QIODevice::WriteOnly));
    EXPECT_TRUE(write(first).contains(second));
    EXPECT_EQ(QFileInfo(second).size(), 0);
    EXPECT_FALSE(QFile::exists(first));
    ASSERT_TRUE(other.rename(first)) << "the user is asked about this one";
    EXPECT_EQ(write(first), QString());
    EXPECT_EQ(write(first), QString()) << "with all of its pages";
    EXPECT_TRUE(QFile::exists(second));

    report.tables.resize(1);
    report.tables[0].rows.resize(1'048'576);
    EXPECT_TRUE(write(folder.filePath(QStringLiteral("rows.xlsx"))).contains(u"1,048,576 rows"));
}

} // namespace
} // namespace tallyroom
