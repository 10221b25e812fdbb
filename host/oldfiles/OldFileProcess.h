// Reading an old file through the program that is made for it.
#pragma once

#include "host/oldfiles/OldFile.h"
#include "host/oldfiles/OldFrames.h"

#include <QDateTime>
#include <QProcess>

namespace tallyroom::host {

// What goes wrong in the other program, whatever a mangled file makes of it, is an OldFileRefused
// here. Needs a QCoreApplication.
class OldFileProcess final : public OldFile {
public:
    // The code page is that of the texts of the oldest version; 0 for the one that the file names.
    explicit OldFileProcess(QString path, int codePage = 0);

    std::vector<OldTable> tables() override;
    qint64 readRows(const OldTable& table, const TakeOldRows& take) override;

    void requireUnchanged() const override;

    // The program; empty when this installation has none.
    static QString program();

private:
    void start(QProcess& process, const QStringList& arguments) const;
    OldFrames::Frame nextFrame(QProcess& process, QByteArray& bytes) const;

    QString m_path;
    qint64 m_size; // of the file as it was found, and when it was written
    QDateTime m_written;
    int m_codePage;
};

} // namespace tallyroom::host
