#include "audit/AuditDeletion.h"
#include "tests/audit/AuditFolder.h"
#include "tests/support/Printing.h"

using namespace tallyroom;

namespace {

AuditEntries::Line line(const QString& action, const QString& time) {
    return {QStringLiteral("01/02/2020 12:00 pm"),
            QStringLiteral("E1"),
            QStringLiteral("Name 1"),
            QStringLiteral("Ann"),
            QStringLiteral("02/03/2020"),
            action,
            time};
}

TEST(AuditDeletion, MatchesByValueWhateverTheRecordingTime) {
    const AuditFolder folder;
    const QString ann = QStringLiteral("Ann");
    folder.addAnswer(ann, u"E1", 0, 150, acceptedColumn, 1);
    folder.addAnswer(ann, u"E1", 0, 150, acceptedColumn, 2);
    folder.addAnswer(u"Bob", u"E1", 0, 150, {}, 2);
    folder.addAnswer(ann, u"E1", 1, 150, declinedColumn, 2);
    folder.addAnswer(ann, u"E2", 0, 150, acceptedColumn, 2);
    deleteAuditLine(folder.path(), line(QStringLiteral("Accepted"), QStringLiteral("02:30")));
    EXPECT_EQ(folder.audit(), QStringList({QStringLiteral("Ann|E1|2|150|tlyrAccepted"),
                                           QStringLiteral("Ann|E1|2|150|tlyrAccepted"),
                                           QStringLiteral("Bob|E1|0|150|Null"),
                                           QStringLiteral("Ann|E1|1|150|tlyrDeclined"),
                                           QStringLiteral("Ann|E2|0|150|tlyrAccepted")}));
    EXPECT_EQ(folder.history(), QStringList({QStringLiteral("E1|Null|Null|150"),
                                             QStringLiteral("E2|150|Null|Null")}));
}

TEST(AuditDeletion, DoubleTimeAndAWrappedAmountKeepTheirTransaction) {
    const struct {
        int minutes;
        QString column;
        QString left;
    } cases[] = {
        {60, accepted2Column, QStringLiteral("Ann|E1|2|60|tlyrAccepted2")},
        {1500, acceptedColumn, QStringLiteral("Ann|E1|0|1500|tlyrAccepted")}, // shows as 01:00
    };
    for (const auto& c : cases) {
        const AuditFolder folder;
        folder.addAnswer(u"Ann", u"E1", 0, c.minutes, c.column);
        deleteAuditLine(folder.path(), line(QStringLiteral("Accepted"), QStringLiteral("01:00")));
        EXPECT_EQ(folder.audit(), QStringList(c.left));
        EXPECT_EQ(folder.history().size(), 1);
    }
}

TEST(AuditDeletion, LinesThatNameNoColumnChangeNothing) {
    const AuditFolder folder;
    folder.addAnswer(u"Ann", u"E1", 0, 60, acceptedColumn);
    const QStringList before = folder.audit() + folder.history();
    for (const char16_t* action : {u"Accepted 1.5", u"Deleted", u"accepted", u""})
        EXPECT_EQ(errorNumberOf([&] {
                      deleteAuditLine(folder.path(),
                                      line(QString::fromUtf16(action), QStringLiteral("01:00")));
                  }),
                  3126);
    EXPECT_EQ(errorNumberOf([&] { deleteAuditLine(folder.path(), {}); }), 13);
    EXPECT_EQ(folder.audit() + folder.history(), before);
}

TEST(AuditDeletion, ATextThatBreaksAStatementChangesNothing) {
    const AuditFolder folder;
    folder.addAnswer(u"Ann", u"E1", 0, 150, acceptedColumn);
    const QStringList before = folder.audit() + folder.history();
    for (const auto cell : {AuditEntries::Code, AuditEntries::User}) {
        AuditEntries::Line hostile = line(QStringLiteral("Accepted"), QStringLiteral("02:30"));
        for (const char16_t* text : {u"x') or True or ('a'='b", u"E'1"}) {
            hostile[cell] = QString::fromUtf16(text);
            EXPECT_EQ(errorNumberOf([&] { deleteAuditLine(folder.path(), hostile); }), 3075);
        }
    }
    EXPECT_EQ(folder.audit() + folder.history(), before);
}

} // namespace
