#include "host/OptionReading.h"

#include "store/Workspace.h"

#include <QDir>

namespace tallyroom::host {

QString dataPath(const QString& given) {
    return Workspace::isOnServer(given) ? given : QDir(given).absolutePath();
}

QString dataOption(const QCommandLineParser& parser, const char* name) {
    const QString given = parser.value(text(name));
    if (given.isEmpty())
        throw UsageError{text("--%1 needs a folder or the address of a site.").arg(text(name))};
    return dataPath(given);
}

int numberOption(const QCommandLineParser& parser, const char* name, int minimum, int maximum) {
    bool isNumber = false;
    const int value = parser.value(text(name)).toInt(&isNumber);
    if (!isNumber || value < minimum || value > maximum)
        throw UsageError{
            text("--%1 must be a number from %2 to %3.").arg(text(name)).arg(minimum).arg(maximum)};
    return value;
}

std::optional<QDate> dateOption(const QCommandLineParser& parser, const char* name) {
    if (!parser.isSet(text(name)))
        return std::nullopt;
    const QDate date = QDate::fromString(parser.value(text(name)), Qt::ISODate);
    if (!date.isValid())
        throw UsageError{text("--%1 must be a date like 2024-03-31.").arg(text(name))};
    return date;
}

} // namespace tallyroom::host
