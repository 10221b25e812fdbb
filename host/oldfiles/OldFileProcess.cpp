#include "host/oldfiles/OldFileProcess.h"

#include "host/BreakOff.h"
#include "host/Places.h"

#include <QFileInfo>

namespace tallyroom::host {

namespace {

constexpr int patience = 30'000; // ms of silence until the other program is given up

OldFileRefused unreadable(const QString& text) {
    return {OldRefusal::Unreadable, text};
}

OldFileRefused brokenOff() {
    return {OldRefusal::Damaged, QStringLiteral("reading it ended in the middle.")};
}

// Ends with its scope, wherever it stands.
class Reader : public QProcess {
public:
    ~Reader() override {
        kill();
        waitForFinished();
    }
};

} // namespace

OldFileProcess::OldFileProcess(QString path, int codePage)
    : m_path(std::move(path)), m_size(QFileInfo(m_path).size()),
      m_written(QFileInfo(m_path).lastModified()), m_codePage(codePage) {}

void OldFileProcess::requireUnchanged() const {
    const QFileInfo file(m_path);
    if (file.size() != m_size || file.lastModified() != m_written)
        throw unreadable(QStringLiteral("somebody wrote to it while it was read."));
}

QString OldFileProcess::program() {
    const QString program = Places::oldFileReader();
    return QFileInfo(program).isExecutable() ? program : QString();
}

void OldFileProcess::start(QProcess& process, const QStringList& arguments) const {
    const QString reader = program();
    if (reader.isEmpty())
        throw unreadable(QStringLiteral("this installation has no program that reads such files."));
    // Its complaints name pages and bytes, which help nobody; what is wrong comes as a frame.
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(reader, QStringList{m_path, QString::number(m_codePage)} + arguments,
                  QIODevice::ReadOnly);
    if (!process.waitForStarted())
        throw unreadable(QStringLiteral("%1 cannot be run.").arg(reader));
}

// Throws what the other program refuses.
OldFrames::Frame OldFileProcess::nextFrame(QProcess& process, QByteArray& bytes) const {
    for (;;) {
        if (auto frame = OldFrames::taken(bytes)) {
            if (const auto* refused = std::get_if<OldFileRefused>(&*frame))
                throw OldFileRefused(*refused);
            return std::move(*frame);
        }
        const bool hasMore = process.bytesAvailable() > 0 || process.waitForReadyRead(patience);
        if (!hasMore) {
            BreakOff::check(); // Ctrl+C ends the other program as well
            throw brokenOff();
        }
        bytes += process.readAll();
    }
}

std::vector<OldTable> OldFileProcess::tables() {
    Reader process;
    QByteArray bytes;
    start(process, {});
    const OldFrames::Frame frame = nextFrame(process, bytes);
    if (const auto* tables = std::get_if<std::vector<OldTable>>(&frame))
        return *tables;
    throw brokenOff();
}

qint64 OldFileProcess::readRows(const OldTable& table, const TakeOldRows& take) {
    Reader process;
    QByteArray bytes;
    start(process, {table.name});
    for (;;) {
        const OldFrames::Frame frame = nextFrame(process, bytes);
        if (const auto* end = std::get_if<OldFrames::End>(&frame)) {
            requireUnchanged();
            return end->countedRows;
        }
        const auto* rows = std::get_if<std::vector<OldRow>>(&frame);
        if (!rows)
            throw brokenOff();
        for (const OldRow& row : *rows) {
            if (row.size() != table.columns.size())
                throw brokenOff();
        }
        take(*rows);
    }
}

} // namespace tallyroom::host
