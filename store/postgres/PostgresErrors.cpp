#include "store/postgres/PostgresErrors.h"

#include "store/ErrorSource.h"

#include <QRegularExpression>
#include <algorithm>
#include <iterator>
#include <libpq-fe.h>

namespace tallyroom {

namespace {

struct KnownState {
    const char* state; // SQLSTATE, or how a class of them begins
    int number;
};

// The first that fits counts.
constexpr KnownState knownStates[] = {
    {"21000", ErrorNumber::moreThanOneRow},   {"22001", ErrorNumber::fieldTooSmall},
    {"22003", ErrorNumber::overflow},         {"22007", ErrorNumber::conversionFailed},
    {"22008", ErrorNumber::conversionFailed}, {"22021", ErrorNumber::conversionFailed},
    {"22P02", ErrorNumber::conversionFailed}, {"22P05", ErrorNumber::conversionFailed},
    {"23502", ErrorNumber::valueRequired},    {"23505", ErrorNumber::duplicateKey},
    {"23", ErrorNumber::valueProhibited},     {"25006", ErrorNumber::readOnly},
    {"3F000", ErrorNumber::fileNotFound},     {"40001", ErrorNumber::databaseInUse},
    {"40P01", ErrorNumber::databaseInUse},    {"42501", ErrorNumber::noPermission},
    {"42P01", ErrorNumber::unknownTable},     {"42P07", ErrorNumber::tableExists},
    {"53100", ErrorNumber::diskFull},         {"53200", ErrorNumber::outOfMemory},
    {"54", ErrorNumber::tooComplex},          {"55006", ErrorNumber::databaseInUse},
    {"55P03", ErrorNumber::databaseInUse},    {"XX001", ErrorNumber::damagedFile},
    {"XX002", ErrorNumber::damagedFile},
};

QString field(const pg_result* result, int code) {
    return QString::fromUtf8(PQresultErrorField(result, code));
}

// The server writes messages in a language of its own and quotes names as that does, or puts them
// last.
QString nameIn(const QString& message) {
    static const QRegularExpression quoted(QStringLiteral("[\"«»„“](.+?)[\"»«“”]"));
    const QString name = quoted.match(message).captured(1).trimmed();
    return name.isEmpty() ? message.section(u' ', -1) : name.section(u'.', -1);
}

QString prohibitedBy(const pg_result* result) {
    for (const int code : {PG_DIAG_COLUMN_NAME, PG_DIAG_CONSTRAINT_NAME, PG_DIAG_DATATYPE_NAME}) {
        if (PQresultErrorField(result, code))
            return field(result, code);
    }
    return {};
}

QString insertOf(int number, const pg_result* result, const QString& name) {
    switch (number) {
    case ErrorNumber::valueRequired:
    case ErrorNumber::valueProhibited:
        return prohibitedBy(result);
    case ErrorNumber::unknownTable:
    case ErrorNumber::tableExists:
    case ErrorNumber::noPermission:
        return nameIn(field(result, PG_DIAG_MESSAGE_PRIMARY));
    default:
        return name;
    }
}

// A connection tells the code of its failure only in another form of the message, thus at another
// attempt. "" when the server has not been reached.
QString loginState(pg_conn* connection) {
    static const QRegularExpression code(QStringLiteral(":\\s+([0-9A-Z]{5})\\s*$"));
    PQsetErrorVerbosity(connection, PQERRORS_SQLSTATE);
    PQreset(connection);
    return code.match(QString::fromUtf8(PQerrorMessage(connection))).captured(1);
}

QString openingReason(const QString& state, const QString& message) {
    if (state == QLatin1String("3D000"))
        return QStringLiteral("there is no such database on the server.");
    if (state == QLatin1String("53300"))
        return QStringLiteral("the server has too many connections already.");
    if (state.startsWith(QLatin1String("57P")))
        return QStringLiteral("the server is starting or stopping. Try again in a moment.");
    return message;
}

} // namespace

RunError statementError(const pg_result* result, const QString& name) {
    const QByteArray state = PQresultErrorField(result, PG_DIAG_SQLSTATE);
    const auto* known = std::ranges::find_if(
        knownStates, [&](const KnownState& entry) { return state.startsWith(entry.state); });
    if (known == std::end(knownStates))
        return {ErrorNumber::internalError, field(result, PG_DIAG_MESSAGE_PRIMARY),
                ErrorSource::database};
    return RunError::make(known->number, {insertOf(known->number, result, name)},
                          ErrorSource::database);
}

RunError openingError(pg_conn* connection, const QString& name, bool isAskedAgain) {
    const QString message = QString::fromUtf8(PQerrorMessage(connection)).trimmed();
    const bool lacksPassword = PQconnectionNeedsPassword(connection) != 0;
    const QString state = isAskedAgain ? loginState(connection) : QString();
    if (lacksPassword || state.startsWith(QLatin1String("28")))
        return RunError::make(ErrorNumber::loginRefused);
    if (state == QLatin1String("42501"))
        return RunError::make(ErrorNumber::noPermission, {name});
    return RunError::make(ErrorNumber::connectionFailed, {name, openingReason(state, message)});
}

bool isGoodbye(const pg_result* result) {
    const QByteArray state = PQresultErrorField(result, PG_DIAG_SQLSTATE);
    return state.startsWith("57P0") || state.startsWith("08") || state == "25P03";
}

} // namespace tallyroom
