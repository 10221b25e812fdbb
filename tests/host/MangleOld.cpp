// mangle_old [RUNS [SEED [SAMPLES]]]: changes old files at random, those of a folder and one that
// is made up, and brings each over. Whatever comes of it, this program goes on, and the copy is
// there whole or not at all.
#include "common/RunError.h"
#include "host/oldfiles/OldCopy.h"
#include "host/oldfiles/OldFileProcess.h"
#include "tests/support/OldFileWriter.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTextStream>
#include <algorithm>
#include <random>

using namespace tallyroom;
using namespace tallyroom::host;

namespace {

QString text(const char16_t* letters) {
    return QString::fromUtf16(letters);
}

QByteArray madeUp() {
    const OldTable table{text(u"Employee"),
                         {{text(u"emp_code"), OldType::Text, 9},
                          {text(u"sendate"), OldType::Date},
                          {text(u"notes"), OldType::Memo},
                          {text(u"active"), OldType::Boolean}}};
    std::vector<OldRow> rows;
    for (int at = 0; at < 300; ++at)
        rows.push_back(
            {QString::number(at), Date{40000.0 + at}, QString(at % 50, u'n'), at % 2 == 0});
    OldFileWriter writer;
    writer.addTable(table, rows);
    return writer.bytes();
}

std::vector<QByteArray> originals(const QString& samples) {
    std::vector<QByteArray> files{madeUp()};
    const QDir folder(samples);
    for (const QString& name : folder.entryList({QStringLiteral("*.mdb")}, QDir::Files)) {
        QFile file(folder.filePath(name));
        if (!samples.isEmpty() && file.open(QIODevice::ReadOnly))
            files.push_back(file.readAll());
    }
    return files;
}

using Random = std::mt19937;

qsizetype below(Random& random, qsizetype end) {
    return std::uniform_int_distribution<qsizetype>(0, end - 1)(random);
}

// The mark at the beginning stays, so that it is read at all.
void mangle(QByteArray& bytes, Random& random) {
    constexpr qsizetype head = 20;
    constexpr qsizetype page = 2048;
    switch (below(random, 8)) {
    case 0:
        bytes.truncate(head + below(random, bytes.size() - head));
        return;
    case 1: {
        const qsizetype pages = bytes.size() / page;
        bytes.replace((1 + below(random, pages - 1)) * page, page,
                      bytes.mid(below(random, pages) * page, page));
        return;
    }
    case 2:
        bytes.replace((1 + below(random, bytes.size() / page - 1)) * page, page,
                      QByteArray(page, '\0'));
        return;
    default:
        for (qsizetype left = 1 + below(random, 30); left > 0; --left)
            bytes[head + below(random, bytes.size() - head)] = char(below(random, 256));
    }
}

void write(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        throw std::runtime_error("no room for a file");
}

struct Tally {
    int copied = 0;
    int refused = 0;
    qint64 longest = 0; // ms
};

// What is wrong afterwards, or nothing.
QString runOne(const QByteArray& bytes, Tally& tally) {
    QTemporaryDir place;
    const QString old = place.filePath(QStringLiteral("old"));
    QDir().mkpath(old);
    for (const char16_t* name : {u"aidb01.mdb", u"vrlxdb01.mdb"})
        write(old + u'/' + text(name), OldFileWriter().bytes());
    write(old + QStringLiteral("/bcx.mdb"), bytes);
    QElapsedTimer timer;
    timer.start();
    QStringList expected{QStringLiteral("old")};
    try {
        copyOldData(old, place.filePath(QStringLiteral("new")), 0,
                    {[](const QString&) {}, [](const QString&) {}});
        expected << QStringLiteral("new") << QStringLiteral("new-copied.txt");
        ++tally.copied;
    } catch (const RunError&) {
        ++tally.refused;
    }
    tally.longest = std::max(tally.longest, timer.elapsed());
    QStringList found =
        QDir(place.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    found.sort();
    expected.sort();
    return found == expected ? QString() : found.join(u' ');
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const int runs = argc > 1 ? std::atoi(argv[1]) : 2000;
    const auto seed = argc > 2 ? unsigned(std::atoi(argv[2])) : 1U;
    const std::vector<QByteArray> files =
        originals(QString::fromLocal8Bit(argc > 3 ? argv[3] : ""));
    QTextStream out(stdout);
    Random random(seed);
    Tally tally;
    int faults = 0;
    for (int run = 0; run < runs; ++run) {
        QByteArray bytes = files[std::size_t(below(random, qsizetype(files.size())))];
        mangle(bytes, random);
        if (const QString left = runOne(bytes, tally); !left.isEmpty()) {
            out << "run " << run << ": left " << left << Qt::endl;
            ++faults;
        }
    }
    out << tally.copied << " copied, " << tally.refused << " refused, the longest " << tally.longest
        << " ms, " << faults << " faults" << Qt::endl;
    const bool isTried = tally.copied > 0 && tally.refused > 0;
    return faults == 0 && isTried ? EXIT_SUCCESS : EXIT_FAILURE;
}
