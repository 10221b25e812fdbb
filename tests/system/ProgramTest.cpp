// The built program, run as a user's command line does.
#include "host/ExitCodes.h"
#include "tests/host/HostDataFolder.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace tallyroom;

namespace {

struct Outcome {
    int exitCode = -1;
    QString out;
    QString errors;
};

Outcome run(const QString& program, const QStringList& arguments, const QString& folder = {}) {
    QProcess process;
    process.setWorkingDirectory(folder);
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

// Permissions of everything below the folder, by name within it.
QMap<QString, mode_t> modesIn(const QDir& folder) {
    QMap<QString, mode_t> modes;
    QDirIterator each(folder.path(), QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                      QDirIterator::Subdirectories);
    while (each.hasNext()) {
        struct stat status {};
        stat(QFile::encodeName(each.next()).constData(), &status);
        modes.insert(folder.relativeFilePath(each.filePath()), status.st_mode & 07777);
    }
    return modes;
}

TEST(Program, KeepsWhatItMakesFromOthers) {
    const QTemporaryDir root;
    const mode_t before = umask(0);
    const auto path = [&](const char* name) { return root.filePath(QString::fromLatin1(name)); };
    ASSERT_TRUE(QDir().mkdir(path("shared")));
    ASSERT_EQ(chmod(path("shared").toLocal8Bit().constData(), 02775), 0);
    QFile old(path("old.csv"));
    ASSERT_TRUE(old.open(QIODevice::WriteOnly));
    const QString orders[] = {QStringLiteral("--create-data made --employees 3 --days 3"),
                              QStringLiteral("--copy-data made copy"),
                              QStringLiteral("--copy-data made shared"),
                              QStringLiteral("--data made --report fairness --out new.csv"),
                              QStringLiteral("--data made --report fairness --out old.csv"),
                              QStringLiteral("--data made --report fairness --out new.png")};
    for (const QString& order : orders) {
        const Outcome outcome = run(QStringLiteral(BRIGHTCLOCK), order.split(u' '), root.path());
        EXPECT_EQ(outcome.exitCode, host::exitSuccess) << outcome.errors.toStdString();
    }
    // Nobody reads what it says.
    run(QStringLiteral("sh"),
        {QStringLiteral("-c"), QStringLiteral(BRIGHTCLOCK " --copy-data made unread | true")},
        root.path());
    umask(before);
    const QMap<QString, mode_t> modes = modesIn(QDir(root.path()));
    for (auto mode = modes.begin(); mode != modes.end(); ++mode) {
        const mode_t wanted = mode.key() == QStringLiteral("old.csv")  ? 0666
                              : mode.key() == QStringLiteral("shared") ? 02775
                              : !mode.key().contains(u'.')             ? 0770
                                                                       : 0660;
        EXPECT_EQ(*mode, wanted) << mode.key().toStdString();
    }
    EXPECT_EQ(modes.size(), 19) << modes.keys().join(u' ').toStdString();
}

} // namespace
