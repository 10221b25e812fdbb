#include "store/SqlText.h"

#include "store/ErrorSource.h"

namespace tallyroom::SqlText {

namespace {

// What is wrong with a literal of this text; empty when nothing is.
QString faultIn(const QString& text) {
    if (text.contains(QChar(QChar::Null)))
        return QStringLiteral("Syntax error in string");
    if (text.contains(QLatin1Char('\'')))
        return QStringLiteral("Syntax error (missing operator)");
    return {};
}

QString quoted(const QString& text) {
    return QLatin1Char('\'') + text + QLatin1Char('\'');
}

} // namespace

QString literal(const QString& text) {
    if (const QString fault = faultIn(text); !fault.isEmpty())
        throw RunError::make(ErrorNumber::syntaxInQuery, {fault, quoted(text)});
    return quoted(text);
}

QString criterion(const QString& text) {
    if (const QString fault = faultIn(text); !fault.isEmpty())
        throw RunError::make(ErrorNumber::syntaxInCriteria, {fault}, ErrorSource::recordset);
    return quoted(text);
}

QString literal(Date date) {
    return QLatin1Char('#') + Dates::toText(date) + QLatin1Char('#');
}

QString name(const QString& column) {
    if (column.trimmed().isEmpty() || column.contains(QLatin1Char('[')) ||
        column.contains(QLatin1Char(']')))
        throw RunError::make(ErrorNumber::invalidBracketing, {column});
    return QLatin1Char('[') + column + QLatin1Char(']');
}

QString escaped(const QString& text) {
    return QString(text).replace(QLatin1Char('\''), QLatin1String("''"));
}

} // namespace tallyroom::SqlText
