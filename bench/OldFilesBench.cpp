// How long it takes to bring over a million rows of the old desktop engine, the copy and its
// reading again included, beside reading them alone.
#include "bench/Measure.h"
#include "host/oldfiles/OldCopy.h"
#include "host/oldfiles/OldFileProcess.h"
#include "tests/support/OldFileWriter.h"

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>
#include <cstdio>

using namespace tallyroom;
using namespace tallyroom::host;

namespace {

constexpr int rowCount = 1'000'000;

QString text(const char16_t* letters) {
    return QString::fromUtf16(letters);
}

const OldTable history{text(u"TimeHistory"),
                       {{text(u"thist_emp"), OldType::Text, 9},
                        {text(u"shift_date"), OldType::Date},
                        {text(u"thist_date"), OldType::Date},
                        {text(u"thist_record_type"), OldType::Text, 2},
                        {text(u"thist_shift"), OldType::Text, 9},
                        {text(u"thist_start_time"), OldType::Date},
                        {text(u"t15"), OldType::Double},
                        {text(u"tlyrAccepted"), OldType::Whole}}};

QByteArray hostFile() {
    std::vector<OldRow> rows;
    rows.reserve(rowCount);
    for (int at = 0; at < rowCount; ++at) {
        const Date day{40000.0 + at % 365};
        rows.push_back({QString::number(at % 5000),
                        day,
                        day,
                        text(u"TR"),
                        text(u"A"),
                        Date{0.25},
                        at % 600 / 10.0,
                        {}});
    }
    OldFileWriter writer;
    writer.addTable(history, rows);
    return writer.bytes();
}

void write(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        std::abort();
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QTemporaryDir place;
    const QString old = place.filePath(text(u"old"));
    QDir().mkpath(old);
    for (const char16_t* name : {u"aidb01.mdb", u"vrlxdb01.mdb"})
        write(old + u'/' + text(name), OldFileWriter().bytes());
    const QString path = old + text(u"/bcx.mdb");
    write(path, hostFile());
    OldFileProcess file(path);
    const double reading = bench::seconds([&] { file.readRows(history, [](const auto&) {}); });
    const double copying = bench::seconds([&] {
        copyOldData(old, place.filePath(text(u"new")), 0,
                    {[](const QString&) {}, [](const QString&) {}});
    });
    std::printf("a million old rows: read in %.1f s, brought over in %.1f s (%.1f times)\n",
                reading, copying, copying / reading);
    return EXIT_SUCCESS;
}
