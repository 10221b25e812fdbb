#include "canvass/CanvassStatements.h"

#include "board/BoardStatements.h"
#include "store/SqlText.h"

#include <array>

namespace tallyroom::CanvassStatements {

namespace {

// Statements that once gave missing figures a zero. A comparison with NULL is never true, so they
// change no row; the grid shows the missing figures as it always did.
constexpr std::array zeroedColumns = {
    u"T15Hours",    u"T20Hours",     u"T15Accepted",  u"T20Accepted",  u"T15Declined",
    u"T20Declined", u"xT15Accepted", u"xT20Accepted", u"xT15Declined", u"xT20Declined",
    u"WorkedOT",    u"AcceptedOT",   u"DeclinedOT",   u"TotalOT1",     u"TotalOT2"};

QString zeroStatement(const char16_t* column) {
    return QStringLiteral("Update [tlyrTemp] Set [%1] = 0 Where [%1] = NULL;")
        .arg(QString::fromUtf16(column));
}

} // namespace

QString deleteRows() {
    return QStringLiteral("Delete * from [tlyrTemp];");
}

QString insertEmployees(const QString& dataPath, const QString& filter) {
    return QStringLiteral("Insert Into [tlyrTemp] in '") + SqlText::escaped(dataPath) +
           QStringLiteral("\\vrlxdb01.mdb' ") + BoardStatements::employees(filter) +
           QLatin1Char(';');
}

QString allRows() {
    return QStringLiteral("Select * from [tlyrTemp];");
}

QString mergedColumns() {
    return QStringLiteral("Select [emp_code],[T15Hours],[T20Hours],[xT15Accepted],[xT20Accepted],"
                          "[xT15Declined],[xT20Declined],[WorkedOT],[AcceptedOT],[DeclinedOT],"
                          "[TotalOT1],[TotalOT2] from [tlyrTemp] order by [emp_code];");
}

QStringList finish() {
    QStringList updates;
    for (const char16_t* column : zeroedColumns)
        updates.append(zeroStatement(column));
    updates.append(QStringLiteral("Update [tlyrTemp] Set [T15Hours_Mult] = ([T15Hours] * 1.5);"));
    updates.append(QStringLiteral("Update [tlyrTemp] Set [T20Hours_Mult] = ([T20Hours] * 2.0);"));
    return updates;
}

} // namespace tallyroom::CanvassStatements
