#include "host/Places.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace tallyroom::host::Places {

namespace {

QString place(const char* besideProgram, const char* installed) {
    const QDir program(QCoreApplication::applicationDirPath());
    const bool isBuild = QFileInfo::exists(program.filePath(QStringLiteral("../CMakeCache.txt")));
    return QDir::cleanPath(
        program.filePath(QString::fromLatin1(isBuild ? besideProgram : installed)));
}

} // namespace

QString module() {
    return place("tallyroom.so", TALLYROOM_MODULE_FOLDER "/tallyroom.so");
}

QString guide() {
    return place("guide/usage.md", TALLYROOM_GUIDE_FOLDER "/usage.md");
}

QString oldFileReader() {
    return place("brightclock-oldfiles", TALLYROOM_TOOLS_FOLDER "/brightclock-oldfiles");
}

} // namespace tallyroom::host::Places
