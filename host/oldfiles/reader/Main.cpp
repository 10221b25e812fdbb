// Reads a file of the old desktop engine and writes what is in it to its standard output, as
// frames. A program of its own, for the library that reads the file trusts it: what goes wrong ends
// here.
#include "host/oldfiles/OldFrames.h"
#include "host/oldfiles/reader/MdbFile.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>

using namespace tallyroom::host;

namespace {

constexpr int exitUsage = 2;

#if defined(__SANITIZE_ADDRESS__)
constexpr bool takesAddressSpace = true; // the sanitizer's own
#else
constexpr bool takesAddressSpace = false;
#endif

void limit(decltype(RLIMIT_CPU) what, rlim_t most) {
    const rlimit both{most, most};
    setrlimit(what, &both);
}

// A sound file needs a small part of this.
void limitOneself(const QString& path) {
    constexpr rlim_t mebi = 1024 * 1024;
    constexpr rlim_t memory = 1024 * mebi;
    constexpr rlim_t seconds = 30;
    if (!takesAddressSpace)
        limit(RLIMIT_AS, memory);
    limit(RLIMIT_CPU, seconds + rlim_t(QFileInfo(path).size()) / mebi);
    limit(RLIMIT_CORE, 0);
    prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
}

// What users set for other programs of the library is not for this one. Names are of the same code
// page as texts.
void setEnvironment(int codePage) {
    constexpr const char* codePageName = "MDB_JET3_CHARSET";
    for (const char* name : {"MDBPATH", "MDBOPTS", "MDBICONV", codePageName})
        qunsetenv(name);
    if (codePage != 0)
        qputenv(codePageName, "CP" + QByteArray::number(codePage));
}

// Whoever reads is gone when this fails.
void send(const OldFrames::Frame& frame) {
    const QByteArray bytes = OldFrames::written(frame);
    const auto size = static_cast<std::size_t>(bytes.size());
    if (std::fwrite(bytes.constData(), 1, size, stdout) != size || std::fflush(stdout) != 0)
        _exit(EXIT_FAILURE);
}

void sendRows(MdbFile& file, const QString& table) {
    const qint64 counted =
        file.readRows({table, {}}, [](const std::vector<OldRow>& rows) { send({rows}); });
    send(OldFrames::End{counted});
}

} // namespace

// FILE CODEPAGE tells its tables, with a TABLE behind them the rows of that one.
int main(int argc, char** argv) {
    if (argc != 3 && argc != 4)
        return exitUsage;
    const QCoreApplication application(argc, argv); // paths are of the user's locale
    const QString path = QFile::decodeName(argv[1]);
    const int codePage = QByteArray(argv[2]).toInt();
    limitOneself(path);
    setEnvironment(codePage);
    try {
        MdbFile file(path, codePage);
        if (argc == 3)
            send(file.tables());
        else
            sendRows(file, QString::fromLocal8Bit(argv[3]));
    } catch (const OldFileRefused& refused) {
        send(refused);
    }
    return EXIT_SUCCESS;
}
