#include "store/sqlite/SqliteErrors.h"

#include <QFileInfo>
#include <QStorageInfo>
#include <sqlite3.h>

namespace tallyroom {

namespace {

int constraintError(int extendedCode) {
    switch (extendedCode) {
    case SQLITE_CONSTRAINT_UNIQUE:
    case SQLITE_CONSTRAINT_PRIMARYKEY:
    case SQLITE_CONSTRAINT_ROWID:
        return ErrorNumber::duplicateKey;
    case SQLITE_CONSTRAINT_NOTNULL:
        return ErrorNumber::valueRequired;
    default:
        return ErrorNumber::valueProhibited;
    }
}

// 0 for what the desktop engine has no number of its own for.
int fileError(int code) {
    switch (code) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return ErrorNumber::databaseInUse;
    case SQLITE_NOTADB:
        return ErrorNumber::unrecognizedFormat;
    case SQLITE_CORRUPT:
        return ErrorNumber::damagedFile;
    case SQLITE_FULL:
        return ErrorNumber::diskFull;
    case SQLITE_IOERR:
    case SQLITE_PERM:
    case SQLITE_AUTH:
    case SQLITE_CANTOPEN:
        return ErrorNumber::cannotOpenFile;
    case SQLITE_READONLY:
        return ErrorNumber::readOnly;
    default:
        return 0;
    }
}

// A journal that finds no room is reported as a file that cannot be opened.
bool isDiskFull(const QString& file) {
    constexpr qint64 block = 4096; // bytes
    const QFileInfo known(file);
    if (known.exists() && !known.isWritable())
        return false;
    const QStorageInfo disk(known.absolutePath());
    return disk.isValid() && disk.bytesAvailable() < block;
}

// What only the message tells apart.
RunError messageError(const QString& message) {
    const QString missingTable = QStringLiteral("no such table: ");
    if (message.contains(QLatin1String(moreThanOneRowMark)))
        return RunError::make(ErrorNumber::moreThanOneRow);
    if (message.startsWith(missingTable))
        return RunError::make(ErrorNumber::unknownTable,
                              {message.mid(message.lastIndexOf(u'.') + 1)});
    if (message == QLatin1String("integer overflow"))
        return RunError::make(ErrorNumber::overflow, {}, ErrorSource::database);
    if (message.startsWith(QLatin1String("too many ")) ||
        message.contains(QLatin1String("parser stack overflow")) ||
        message.contains(QLatin1String("Expression tree is too large")))
        return RunError::make(ErrorNumber::tooComplex);
    return {ErrorNumber::internalError, message, ErrorSource::database};
}

} // namespace

bool isFileError(int code) {
    return fileError(code & 0xff) != 0;
}

RunError storeError(const SQLite::Exception& error, const QString& file) {
    const int code = error.getErrorCode() & 0xff;
    const QString message = QString::fromUtf8(error.what());
    if (code == SQLITE_CONSTRAINT)
        return RunError::make(constraintError(error.getExtendedErrorCode()),
                              {message.section(u'.', -1)});
    if ((code == SQLITE_CANTOPEN || code == SQLITE_IOERR) && isDiskFull(file))
        return RunError::make(ErrorNumber::diskFull);
    if (const int number = fileError(code))
        return RunError::make(number, {file});
    return messageError(message);
}

} // namespace tallyroom
