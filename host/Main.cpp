// The stand-in host's entry point.
#include "common/Display.h"
#include "common/RunError.h"
#include "common/look/Contrast.h"
#include "host/BoardRun.h"
#include "host/BreakOff.h"
#include "host/ExitCodes.h"
#include "host/Host.h"
#include "host/HostMessages.h"
#include "host/Options.h"
#include "host/RecentFolders.h"
#include "host/ReportRun.h"
#include "host/Versions.h"
#include "host/copy/Upgrade.h"
#include "host/demo/DemoData.h"
#include "host/frmStart.h"
#include "host/oldfiles/OldCopy.h"

#include <QApplication>
#include <QIcon>
#include <QTemporaryFile>
#include <QTextStream>
#include <sys/stat.h>

using namespace tallyroom;
using namespace tallyroom::host;

namespace {

QStringList argumentTexts(int argc, char** argv) {
    QStringList texts;
    for (int at = 0; at < argc; ++at)
        texts << QString::fromLocal8Bit(argv[at]);
    return texts;
}

// What is made here, data, reports, pictures, holds people's names and hours: nobody but their
// owner and the group may read it.
void keepFromOthers() {
    const mode_t given = umask(S_IRWXO);
    umask(given | S_IRWXO);
}

int showHelp(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    QTextStream(stdout) << helpText();
    return exitSuccess;
}

int showVersion(const QString& moduleFile, int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    QTextStream(stdout) << versionLines(moduleFile).join(u'\n') << '\n';
    return exitSuccess;
}

void printProgress(int done, int total) {
    QTextStream(stderr) << QStringLiteral("\r%1 of %2 employees ").arg(done).arg(total);
}

int createData(const DemoSettings& settings) {
    constexpr qint64 largeRows = 500000;
    const bool isLarge = qint64(settings.employees) * settings.days > largeRows;
    try {
        BreakOff::allow();
        createDemoData(settings, [isLarge](int done, int total) {
            if (isLarge)
                printProgress(done, total);
            BreakOff::check();
        });
        if (isLarge)
            QTextStream(stderr) << '\n';
        return exitSuccess;
    } catch (const RunError& error) {
        printError(error.description());
    }
    return exitFailure;
}

// Runs what tells of its progress: for who watches, a line that is written over.
int runWatched(const std::function<void(const CopyMessages&)>& action) {
    constexpr int lineWidth = 60;
    QTextStream out(stdout);
    QTextStream watched(stderr);
    const auto over = [&](const QString& line) {
        watched << u'\r' << line.leftJustified(lineWidth) << u'\r' << Qt::flush;
    };
    const auto say = [&](const QString& line) {
        over({});
        out << line << Qt::endl;
    };
    const auto progress = [&](const QString& line) {
        over(line);
        BreakOff::check();
    };
    try {
        BreakOff::allow();
        action({say, progress});
        return exitSuccess;
    } catch (const RunError& error) {
        over({});
        printError(error.description());
    }
    return exitFailure;
}

int copy(const Options& options, int argc, char** argv) {
    const QCoreApplication application(argc, argv); // for the programs that it starts
    return runWatched([&](const CopyMessages& messages) {
        if (isOldFolder(options.copiedFrom))
            copyOldData(options.copiedFrom, options.copiedTo, options.codePage, messages);
        else
            copyData(options.copiedFrom, options.copiedTo, messages);
        messages.say(QStringLiteral("Copied and compared."));
    });
}

int upgrade(const QString& dataPath) {
    return runWatched([&](const CopyMessages& messages) {
        refuseOldFolder(dataPath);
        upgradeData(dataPath, messages);
    });
}

int runWindow(const Options& options) {
    Host host(options);
    RecentFolders::remember(options.dataFolder, options.user);
    host.showMenu();
    return QApplication::exec();
}

// Asks until something can be opened, or the user gives up.
int askAndRun(Options options) {
    for (frmStart form; form.exec() == QDialog::Accepted;) {
        options.dataFolder = form.folder();
        options.user = form.user();
        try {
            refuseOldFolder(options.dataFolder);
            return runWindow(options);
        } catch (const RunError& error) {
            showError(error, &form);
        }
    }
    return exitSuccess;
}

// The screen that the platform has of itself is smaller than the board.
void useLargeScreen(QTemporaryFile& screens) {
    QByteArray platform = "offscreen";
    if (screens.open() && screens.write(R"({"screens":[{"name":"picture","x":0,"y":0,)"
                                        R"("width":1920,"height":1080,"logicalDpi":96,)"
                                        R"("logicalBaseDpi":96,"dpr":1}]})") > 0) {
        screens.close();
        platform += ":configfile=" + screens.fileName().toLocal8Bit();
    }
    qputenv("QT_QPA_PLATFORM", platform);
}

// Fonts and pictures take a platform, but nothing is shown.
int report(const Options& options, int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    return runReport(options.dataFolder, options.user, options.report);
}

QIcon windowIcon() {
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 128})
        icon.addFile(QStringLiteral(":/icons/%1.png").arg(size));
    return icon;
}

int run(const Options& options, int argc, char** argv) {
    QTemporaryFile screens;
    if (!options.pictureFile.isEmpty())
        useLargeScreen(screens);
    const bool namesPlatform = argumentTexts(argc, argv).contains(QStringLiteral("-platform"));
    if (!namesPlatform && !hasDisplay()) {
        printError(QStringLiteral("there is no display. --picture FILE needs none."));
        return exitNoDisplay;
    }
    QApplication application(argc, argv);
    Contrast::giveToAll(application);
    QApplication::setApplicationName(QStringLiteral("Brightclock"));
    QApplication::setWindowIcon(windowIcon());
    QApplication::setDesktopFileName(QStringLiteral("brightclock"));
    QApplication::setQuitOnLastWindowClosed(false);
    try {
        if (options.dataFolder.isEmpty())
            return askAndRun(options);
        refuseOldFolder(options.dataFolder);
        return options.isScripted() ? runBoard(options) : runWindow(options);
    } catch (const RunError& error) {
        if (options.isScripted())
            printError(QStringLiteral("error %1: %2").arg(error.number()).arg(error.description()));
        else
            showError(error, nullptr);
        return exitFailure;
    }
}

} // namespace

int main(int argc, char** argv) {
    keepFromOthers();
    const OptionsResult parsed = parseOptions(argumentTexts(argc, argv));
    if (!parsed.options) {
        printError(parsed.error + QStringLiteral(" Try --help."));
        return exitUsage;
    }
    switch (parsed.options->command) {
    case Command::ShowHelp:
        return showHelp(argc, argv);
    case Command::ShowVersion:
        return showVersion(parsed.options->moduleFile, argc, argv);
    case Command::CreateData:
        return createData(parsed.options->demo);
    case Command::CopyData:
        return copy(*parsed.options, argc, argv);
    case Command::Upgrade:
        return upgrade(parsed.options->upgraded);
    case Command::Report:
        return report(*parsed.options, argc, argv);
    case Command::Run:
        break;
    }
    return run(*parsed.options, argc, argv);
}
