// The built program, run as a user's command line does.
#include "host/ExitCodes.h"
#include "tests/host/HostDataFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <gtest/gtest.h>

using namespace tallyroom;

namespace {

struct Outcome {
    int exitCode = -1;
    QString out;
    QString errors;
};

Outcome run(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished();
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

TEST(Program, LoadsNothingThatHappensToLieBesideIt) {
    const host::HostDataFolder data;
    const QTemporaryDir root;
    const QDir installed(root.filePath(QStringLiteral("bin")));
    ASSERT_TRUE(installed.mkpath(QStringLiteral(".")));
    const QString program = installed.filePath(QStringLiteral("brightclock"));
    ASSERT_TRUE(QFile::copy(QStringLiteral(BRIGHTCLOCK), program));
    for (const char* name : {"aaa.so", "tallyroom.so"})
        ASSERT_TRUE(QFile::copy(QStringLiteral(TALLYROOM_MODULE),
                                installed.filePath(QString::fromLatin1(name))));
    // An entry of the add-in that opens no window.
    const QStringList order{QStringLiteral("--data"), data.path(), QStringLiteral("--open"),
                            QStringLiteral("Smallforge")};
    const Outcome refused = run(program, order);
    EXPECT_EQ(refused.exitCode, host::exitFailure);
    static const QRegularExpression named(QStringLiteral("there is no file (.*/tallyroom\\.so)"));
    const QString place = named.match(refused.errors).captured(1);
    ASSERT_TRUE(place.startsWith(root.path())) << refused.errors.toStdString();

    ASSERT_TRUE(QDir().mkpath(QFileInfo(place).path()));
    ASSERT_TRUE(QFile::copy(QStringLiteral(TALLYROOM_MODULE), place));
    const Outcome opened = run(program, order);
    EXPECT_EQ(opened.exitCode, host::exitSuccess) << opened.errors.toStdString();
    const Outcome asked = run(program, {QStringLiteral("--version")});
    EXPECT_EQ(asked.exitCode, host::exitSuccess);
    EXPECT_TRUE(asked.out.startsWith(QStringLiteral("brightclock ")));
    EXPECT_TRUE(asked.out.endsWith(QStringLiteral("\nmodule %1\n").arg(place)));
}

} // namespace
