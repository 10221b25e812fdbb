// Reading single options of a command line.
#pragma once

#include <QCommandLineParser>
#include <QDate>
#include <optional>

namespace tallyroom::host {

// What is wrong with the command line: a sentence.
struct UsageError {
    QString text;
};

inline QString text(const char* latin1) {
    return QString::fromLatin1(latin1);
}

// All throw UsageError for a value that does not suit.

// A folder, made absolute, or the address of a site.
QString dataOption(const QCommandLineParser& parser, const char* name);
QString dataPath(const QString& given);

int numberOption(const QCommandLineParser& parser, const char* name, int minimum, int maximum);

// "2024-03-31"; nothing when it is not given.
std::optional<QDate> dateOption(const QCommandLineParser& parser, const char* name);

} // namespace tallyroom::host
