// Old files that real programs made, read as mdb-export reads them. The folder of such files is
// named by TALLYROOM_OLD_SAMPLES; it is no part of the project.
#include "host/oldfiles/OldFileProcess.h"

#include <QDir>
#include <QProcess>
#include <QStandardPaths>
#include <gtest/gtest.h>

namespace tallyroom::host {
namespace {

const QString cellEnd = QStringLiteral("<||>"); // one sample has all characters of one byte
const QString rowEnd = QStringLiteral("<==>");

QString samples() {
    return qEnvironmentVariable("TALLYROOM_OLD_SAMPLES", QStringLiteral(OLD_SAMPLES));
}

// A value as that program writes it.
QString exported(const OldValue& value, OldType type) {
    if (const bool* flag = std::get_if<bool>(&value))
        return QString::number(*flag ? 1 : 0);
    if (const double* number = std::get_if<double>(&value))
        return QString::number(*number, 'g', type == OldType::Single ? 8 : 16);
    if (const qint32* number = std::get_if<qint32>(&value))
        return QString::number(*number);
    if (const OldDecimal* decimal = std::get_if<OldDecimal>(&value))
        return decimal->digits;
    if (const Date* date = std::get_if<Date>(&value))
        return Dates::toIso(*date);
    const QString* text = std::get_if<QString>(&value);
    return text ? *text : QString();
}

QStringList readHere(OldFileProcess& file, const OldTable& table) {
    QStringList lines;
    file.readRows(table, [&](const std::vector<OldRow>& rows) {
        for (const OldRow& row : rows) {
            QStringList cells;
            for (std::size_t at = 0; at < row.size(); ++at)
                cells << exported(row[at], table.columns[at].type);
            lines << cells.join(cellEnd);
        }
    });
    lines.sort();
    return lines;
}

QStringList readThere(const QString& path, const QString& table) {
    QProcess program;
    program.start(QStringLiteral("mdb-export"),
                  {QStringLiteral("-H"), QStringLiteral("-Q"), QStringLiteral("-b"),
                   QStringLiteral("strip"), QStringLiteral("-d"), cellEnd, QStringLiteral("-R"),
                   rowEnd, QStringLiteral("-D"), QStringLiteral("%Y-%m-%d"), QStringLiteral("-T"),
                   QStringLiteral("%Y-%m-%d %H:%M:%S"), path, table});
    EXPECT_TRUE(program.waitForFinished());
    QStringList lines =
        QString::fromUtf8(program.readAllStandardOutput()).split(rowEnd, Qt::SkipEmptyParts);
    lines.sort();
    return lines;
}

TEST(OldSamples, AreReadAsAnotherProgramReadsThem) {
    if (OldFileProcess::program().isEmpty())
        GTEST_SKIP() << "this build has no program that reads old files";
    if (QStandardPaths::findExecutable(QStringLiteral("mdb-export")).isEmpty())
        GTEST_SKIP() << "mdb-export of the package mdbtools is not there";
    const QFileInfoList files = QDir(samples()).entryInfoList({QStringLiteral("*.mdb")});
    if (files.isEmpty())
        GTEST_SKIP() << "there are no old files in '" << samples().toStdString() << "'";
    QStringList refused;
    int compared = 0;
    for (const QFileInfo& info : files) {
        OldFileProcess file(info.filePath());
        try {
            for (const OldTable& table : file.tables()) {
                EXPECT_EQ(readHere(file, table).join(u'\n').toStdString(),
                          readThere(info.filePath(), table.name).join(u'\n').toStdString())
                    << info.fileName().toStdString();
                ++compared;
            }
        } catch (const OldFileRefused&) {
            refused << info.baseName();
        }
    }
    EXPECT_GT(compared, 0);
    EXPECT_EQ(refused, (QStringList{QStringLiteral("linked"), QStringLiteral("password")}));
}

} // namespace
} // namespace tallyroom::host
