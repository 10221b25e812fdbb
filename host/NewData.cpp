#include "host/NewData.h"

#include "common/RunError.h"
#include "store/Workspace.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

namespace tallyroom::host {

namespace {

RunError notFree(const QString& folder) {
    return {ErrorNumber::fileExists,
            QStringLiteral("'%1' is there already and holds something; it was left as it is.")
                .arg(folder),
            QStringLiteral("Brightclock")};
}

void requireFree(const QString& folder) {
    const QFileInfo info(folder);
    const QDir::Filters everything = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;
    if (info.exists() && (!info.isDir() || !QDir(folder).isEmpty(everything)))
        throw notFree(folder);
}

// Made beside its place and moved there when it is complete.
void makeFolder(const QString& folder, std::span<const Schema::File> files, const FillData& fill) {
    requireFree(folder);
    const QFileInfo target(folder);
    if (!QDir().mkpath(target.absolutePath()))
        throw RunError::make(ErrorNumber::invalidPath, {target.absolutePath()});
    QTemporaryDir workshop(target.absoluteFilePath() + QStringLiteral(".XXXXXX"));
    if (!workshop.isValid())
        throw RunError::make(ErrorNumber::invalidPath, {folder});
    const QString made = workshop.filePath(QStringLiteral("data"));
    QDir().mkdir(made);
    Workspace::createFiles(
        made, [&] { fill(made); }, files);
    QDir().rmdir(folder); // an empty one makes room, another one stays
    if (!QDir().rename(made, folder))
        throw notFree(folder);
}

} // namespace

void makeData(const QString& dataPath, std::span<const Schema::File> files, const FillData& fill) {
    if (Workspace::isOnServer(dataPath))
        Workspace::createFiles(
            dataPath, [&] { fill(dataPath); }, files);
    else
        makeFolder(dataPath, files, fill);
}

} // namespace tallyroom::host
