#include "host/oldfiles/OldCopy.h"

#include "common/RunError.h"
#include "host/oldfiles/OldFileProcess.h"
#include "host/oldfiles/OldSource.h"
#include "reports/ReportText.h"
#include "reports/Reports.h"
#include "store/Workspace.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <algorithm>

namespace tallyroom::host {

namespace {

RunError unrecognized(const QString& text) {
    return {ErrorNumber::unrecognizedFormat, text, QStringLiteral("Brightclock")};
}

QString pathOf(const QString& folder, const Schema::File& file) {
    return Workspace::resolveFile(folder + u'/' + QString::fromUtf16(file.name));
}

bool hasMark(const QString& path) {
    constexpr qint64 place = 4;
    const QByteArray mark = QByteArrayLiteral("Standard Jet DB");
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && file.read(place + mark.size()).mid(place) == mark;
}

QString reportPath(const QString& to) {
    const QString end = QStringLiteral("-copied.txt");
    if (!Workspace::isOnServer(to))
        return QDir::cleanPath(QFileInfo(to).absoluteFilePath()) + end;
    return QDir::current().absoluteFilePath(to.section(u'?', 0, 0).section(u'/', -1) + end);
}

std::unique_ptr<CopySource> sourceOf(const QString& from, const Schema::File& file, int codePage,
                                     CopyReport& report) {
    const QString path = pathOf(from, file);
    if (!QFileInfo(path).isReadable())
        throw RunError::make(ErrorNumber::cannotOpenFile, {path});
    if (!hasMark(path))
        throw unrecognized(QStringLiteral("%1 is not in the format of the old desktop engine, as "
                                          "other files of its folder are. Nothing was copied.")
                               .arg(path));
    return std::make_unique<OldSource>(file, path, std::make_unique<OldFileProcess>(path, codePage),
                                       report);
}

// The data are there by now, whatever the checks meet.
void sayFindings(const QString& dataPath, const CopyMessages& messages) {
    ReportRequest checks;
    checks.kind = ReportKind::Checks;
    try {
        messages.say(reportText(Reports::make(dataPath, checks)));
    } catch (const RunError& error) {
        messages.say(QStringLiteral("The data could not be checked: %1").arg(error.description()));
    } catch (const BadRequest& request) {
        messages.say(QStringLiteral("The data could not be checked: %1").arg(request.text));
    }
}

} // namespace

bool isOldFolder(const QString& dataPath) {
    if (Workspace::isOnServer(dataPath))
        return false;
    return std::ranges::any_of(Schema::files(), [&](const Schema::File& file) {
        try {
            return hasMark(pathOf(dataPath, file));
        } catch (const RunError&) {
            return false; // what is missing is met by who opens it
        }
    });
}

void refuseOldFolder(const QString& dataPath) {
    if (isOldFolder(dataPath))
        throw unrecognized(
            QStringLiteral(
                "The folder '%1' is in the format of the old desktop engine; bring it over to a "
                "new folder, which leaves it as it is: brightclock --copy-data '%1' NEW")
                .arg(dataPath));
}

void copyOldData(const QString& from, const QString& to, int codePage,
                 const CopyMessages& messages) {
    const QString reportFile = reportPath(to);
    QDir().mkpath(QFileInfo(reportFile).path()); // where that fails, so does the report
    CopyReport report(reportFile);
    report.line(QStringLiteral("%1, copied to %2 on %3")
                    .arg(from, to, QDateTime::currentDateTime().toString(Qt::ISODate)));
    const CopyMessages noted{[&](const QString& line) {
                                 report.line(line);
                                 messages.say(line);
                             },
                             messages.progress};
    std::vector<CopiedSource> sources;
    for (const Schema::File& file : Schema::files())
        sources.push_back({file, sourceOf(from, file, codePage, report)});
    copySources(sources, to, noted);
    for (const QString& line : report.summary())
        noted.say(line);
    sayFindings(to, noted);
    report.finish();
    messages.say(QStringLiteral("All of this is in %1").arg(report.path()));
}

} // namespace tallyroom::host
