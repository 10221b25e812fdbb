// The one error type of the system and the one table of error numbers and texts.
#pragma once

#include <QString>
#include <QStringList>
#include <exception>

namespace tallyroom {

// A run-time error as the old run time reports it. Whatever is not an expected outcome is thrown as
// a RunError and ends the command that met it.
class RunError : public std::exception {
public:
    RunError(int number, QString description, QString source);

    // The error `number` with its table text; each "|" of the text takes the next insert. The
    // source is that of the part of the old run time that raises such errors, unless given.
    static RunError make(int number, const QStringList& inserts = {}, const QString& source = {});

    int number() const { return m_number; }
    const QString& description() const { return m_description; }
    const QString& source() const { return m_source; }
    const char* what() const noexcept override { return m_what.constData(); }

private:
    int m_number;
    QString m_description;
    QString m_source;
    QByteArray m_what;
};

// Names of the error numbers that the code itself speaks of.
namespace ErrorNumber {
inline constexpr int invalidProcedureCall = 5;
inline constexpr int overflow = 6;
inline constexpr int outOfMemory = 7;
inline constexpr int subscriptOutOfRange = 9;
inline constexpr int typeMismatch = 13;
inline constexpr int internalError = 51;
inline constexpr int objectNotSet = 91;
inline constexpr int invalidUseOfNull = 94;
inline constexpr int objectRequired = 424;
inline constexpr int cannotCreateObject = 429;
inline constexpr int noSuchMember = 438;
inline constexpr int wrongArgumentCount = 450;
inline constexpr int invalidPicture = 481;

inline constexpr int tableExists = 3010;
inline constexpr int noEditPending = 3020;
inline constexpr int noCurrentRecord = 3021;
inline constexpr int duplicateKey = 3022;
inline constexpr int fileNotFound = 3024;
inline constexpr int diskFull = 3026;
inline constexpr int readOnly = 3027;
inline constexpr int loginRefused = 3029;
inline constexpr int noPermission = 3033;
inline constexpr int connectionLost = 3043;
inline constexpr int invalidPath = 3044;
inline constexpr int damagedFile = 3049;
inline constexpr int cannotOpenFile = 3051;
inline constexpr int tooFewParameters = 3061;
inline constexpr int duplicateOutput = 3063;
inline constexpr int notASelect = 3065;
inline constexpr int unknownField = 3070;
inline constexpr int syntaxInQuery = 3075;
inline constexpr int syntaxInCriteria = 3077;
inline constexpr int unknownTable = 3078;
inline constexpr int unknownFunction = 3085;
inline constexpr int orderBesideDistinct = 3093;
inline constexpr int aggregateInWhere = 3096;
inline constexpr int circularAlias = 3103;
inline constexpr int notInGroup = 3122;
inline constexpr int invalidBracketing = 3126;
inline constexpr int unknownInsertField = 3127;
inline constexpr int invalidStatement = 3129;
inline constexpr int syntaxInFrom = 3131;
inline constexpr int syntaxInInsert = 3134;
inline constexpr int syntaxInOrderBy = 3138;
inline constexpr int syntaxInSelect = 3141;
inline constexpr int textAfterStatement = 3142;
inline constexpr int syntaxInUpdate = 3144;
inline constexpr int connectionFailed = 3151;
inline constexpr int fieldTooSmall = 3163;
inline constexpr int fieldNotUpdatable = 3164;
inline constexpr int recordDeleted = 3167;
inline constexpr int unknownOutputTable = 3192;
inline constexpr int databaseInUse = 3196;
inline constexpr int fileExists = 3204;
inline constexpr int invalidOperation = 3219;
inline constexpr int itemNotFound = 3265;
inline constexpr int syntaxInDrop = 3295;
inline constexpr int subqueryColumns = 3306;
inline constexpr int valueRequired = 3314;
inline constexpr int valueProhibited = 3317;
inline constexpr int unrecognizedFormat = 3343;
inline constexpr int valueCountDiffers = 3346;
inline constexpr int moreThanOneRow = 3354;
inline constexpr int tooComplex = 3360;
inline constexpr int noSuchTable = 3376;
inline constexpr int objectInvalid = 3420;
inline constexpr int conversionFailed = 3421;
inline constexpr int criteriaTypeMismatch = 3464;
} // namespace ErrorNumber

} // namespace tallyroom
