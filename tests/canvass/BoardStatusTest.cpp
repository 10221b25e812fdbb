// What the status bar says, and by what.
#include "canvass/BoardStatus.h"
#include "audit/AnswersOfDay.h"
#include "canvass/AnswerNews.h"
#include "canvass/Offer.h"
#include "common/DateParser.h"
#include "tests/support/DataFolder.h"
#include "tests/support/Printing.h"

using namespace tallyroom;

namespace {

Date day(const char16_t* text) {
    return *Dates::parse(QString::fromUtf16(text));
}

Offer offerTo(const QStringList& names) {
    Offer offer;
    offer.names = names;
    offer.amount = QStringLiteral("8:00");
    offer.canvassDate = QStringLiteral("11/28/2026");
    offer.today = day(u"11/21/2026");
    return offer;
}

// Said after who is selected.
TEST(BoardStatus, AnOfferIsSaidWithWhatIsUnusualAboutIt) {
    const struct {
        const char16_t* amount;
        const char16_t* second; // nullptr: not broken out
        const char16_t* date;
        const char16_t* said;
    } cases[] = {
        {u"8:00", nullptr, u"11/28/2026", u"8:00 \u00b7 Sat 11/28/2026"},
        {u"7.5", nullptr, u"1/20/2027", u"7:30 \u00b7 Wed 1/20/2027"},
        {u"8:00", nullptr, u"1/21/2027", u"8:00 \u00b7 Thu 1/21/2027 \u00b7 61 days ahead"},
        {u"8:00", nullptr, u"9/22/2026", u"8:00 \u00b7 Tue 9/22/2026"},
        {u"8:00", nullptr, u"11/28/2025", u"8:00 \u00b7 Fri 11/28/2025 \u00b7 358 days ago"},
        {u"8:00", nullptr, u"9:30", u"8:00 \u00b7 Sat 12/30/1899 \u00b7 a time without a date"},
        {u"8:00", nullptr, u" ", u"8:00 \u00b7 Date is empty"},
        {u"8:00", nullptr, u"13/45/2026", u"8:00 \u00b7 13/45/2026 is not a date"},
        {u"12:00", nullptr, u"11/28/2026", u"12:00 \u00b7 Sat 11/28/2026"},
        {u"12:01", nullptr, u"11/28/2026", u"12:01 \u00b7 more than 12:00 \u00b7 Sat 11/28/2026"},
        {u"0.24", nullptr, u"11/28/2026", u"0:14 \u00b7 less than 0:15 \u00b7 Sat 11/28/2026"},
        {u"0:15", nullptr, u"11/28/2026", u"0:15 \u00b7 Sat 11/28/2026"},
        {u"8", nullptr, u"11/28/2026", u"8 is not a time: 8:00 or 8.0 \u00b7 Sat 11/28/2026"},
        {u"12", nullptr, u"11/28/2026", u"12 is not a time: 12:00 or 12.0 \u00b7 Sat 11/28/2026"},
        {u"480", nullptr, u"x", u"480 is not a time: 8:00 or 8.0 \u00b7 x is not a date"},
        {u"", nullptr, u"11/28/2026", u"Overtime is empty: 8:00 or 8.0 \u00b7 Sat 11/28/2026"},
        {u"-1:00", nullptr, u"11/28/2026",
         u"-1:00 is not within a day: 0:00 to 24:00 \u00b7 Sat 11/28/2026"},
        {u"4:00", u"2:00", u"11/28/2026", u"4:00 + 2:00 \u00b7 Sat 11/28/2026"},
        {u"0:00", u"2:00", u"11/28/2026", u"0:00 + 2:00 \u00b7 Sat 11/28/2026"},
        {u"0:00", u"0:00", u"11/28/2026",
         u"0:00 + 0:00 \u00b7 less than 0:15 \u00b7 Sat 11/28/2026"},
        {u"4:00", u"0:02", u"11/28/2026",
         u"4:00 + 0:02 \u00b7 less than 0:15 \u00b7 Sat 11/28/2026"},
        {u"8:00", u"5:00", u"11/28/2026",
         u"8:00 + 5:00 \u00b7 more than 12:00 \u00b7 Sat 11/28/2026"},
        {u"4:00", u"", u"11/28/2026", u"2.0 is empty: 8:00 or 8.0 \u00b7 Sat 11/28/2026"},
        {u"", u"2", u"11/28/2026",
         u"1.5 is empty: 8:00 or 8.0 \u00b7 2 is not a time: 2:00 or 2.0 \u00b7 Sat 11/28/2026"},
    };
    for (const auto& c : cases) {
        Offer offer = offerTo({QStringLiteral("Pereira, Liam G.")});
        offer.amount = QString::fromUtf16(c.amount);
        offer.breakOut = c.second != nullptr;
        offer.doubleAmount = c.second ? QString::fromUtf16(c.second) : QStringLiteral("x");
        offer.canvassDate = QString::fromUtf16(c.date);
        EXPECT_EQ(offer.text(), QStringLiteral("1 selected: Pereira, Liam G. \u00b7 ") +
                                    QString::fromUtf16(c.said));
    }
}

TEST(BoardStatus, AnOfferSaysWhomItGoesToAndWhetherItCounts) {
    EXPECT_EQ(offerTo({}).text(), QString());
    const QString offered = QStringLiteral(" \u00b7 8:00 \u00b7 Sat 11/28/2026 \u00b7 A, B; C; D");
    Offer offer = offerTo({QStringLiteral("A, B"), QStringLiteral("C"), QStringLiteral("D")});
    EXPECT_EQ(offer.text(), QStringLiteral("3 selected") + offered);
    offer.names.append(QStringLiteral("E"));
    offer.answered = 1;
    EXPECT_EQ(offer.text(), QStringLiteral("4 selected, 1 already answered for Sat 11/28") +
                                offered + QStringLiteral("; \u2026"));
    offer.today = day(u"12/31/2025");
    EXPECT_TRUE(offer.text().contains(QStringLiteral("answered for Sat 11/28/2026")));
    offer.today = day(u"11/21/2026");
    for (const char16_t* last : {u"11/28/2026", u"11/27/2026"}) {
        offer.period = TotallingPeriod{day(u"11/1/2026"), day(last)};
        EXPECT_EQ(offer.text().contains(QStringLiteral(
                      " \u00b7 outside the totalling period: these figures will not change")),
                  offer.period->to < day(u"11/28/2026"));
    }
}

TEST(BoardStatus, ARecordingIsSaidWithWhoWasPassedOver) {
    AnswerRequest request;
    request.decline = true;
    request.canvassDate = QStringLiteral("11/28/2026");
    AnswerRecording::Result result;
    const auto said = [&](const QStringList& names = {}) {
        return AnswerNews::text(request, result, names, day(u"11/21/2026"));
    };
    EXPECT_EQ(said(), QStringLiteral("Nothing was recorded: nobody is selected"));
    result.employees = 1;
    result.recorded = 1;
    result.amounts = {QStringLiteral("8.0")};
    EXPECT_EQ(said({QStringLiteral("A, B")}),
              QStringLiteral("Declined 8:00 for A, B on Sat 11/28"));
    result.employees = 7;
    result.recorded = 3;
    result.withoutRule = 3;
    result.unlisted = 1;
    request.accept = true;
    request.breakOut = true;
    result.amounts = {QStringLiteral("4:00"), QStringLiteral("2:00")};
    const QString passedOver = QStringLiteral("; 3 passed over: shift without a rule; 1 passed "
                                              "over: no longer on the list: Refresh");
    EXPECT_EQ(said(), QStringLiteral("Accepted 4:00 + 2:00 for 3 on Sat 11/28") + passedOver);
    result.amounts = {QStringLiteral("4:00")};
    result.notSetUp = {&answerKind(AuditAction::Accepted, Rate::Double)};
    EXPECT_EQ(said(), QStringLiteral("Accepted 4:00 for 3 on Sat 11/28; the absent code for "
                                     "accepted 2.0 is not set up") +
                          passedOver);
    result.recorded = 0;
    EXPECT_TRUE(said().startsWith(QStringLiteral("Nothing was recorded; the absent code")));
}

TEST(BoardStatus, TheOfferComesBeforeTheLastCommandAndTheNotesAfter) {
    BoardStatus status;
    status.command = QStringLiteral("Accepted");
    status.stale = true;
    status.user = QStringLiteral("user");
    EXPECT_EQ(status.text(QString()),
              QStringLiteral("Accepted; the figures are not current: Refresh  \u00b7  user"));
    EXPECT_TRUE(
        status.text(QStringLiteral("1 selected")).startsWith(QStringLiteral("1 selected; ")));
    BoardFigures figures;
    figures.employees = 1;
    EXPECT_EQ(figures.text(),
              QStringLiteral("Totals of all dates  \u00b7  No order  \u00b7  1 employee"));
    figures = {TotallingPeriod{day(u"11/1/2026"), day(u"11/30/2026")}, QStringLiteral("Least"), 38,
               QStringLiteral("Day"), QStringLiteral("jo")};
    EXPECT_EQ(figures.text(),
              QStringLiteral("Totals 11/1/2026 to 11/30/2026  \u00b7  Order: Least  \u00b7  38 "
                             "employees  \u00b7  Day  \u00b7  jo"));
}

TEST(AnswersOfDay, AreThoseThatCanBeReadAndStand) {
    const DataFolder folder;
    folder.executeNatively(
        addInFile,
        "INSERT INTO TLYR_Audit (Now, User, Emp_Code, Date, Action, OT, tHistField) VALUES"
        "('2026-11-21 14:05:00','jo','e1','2026-11-28 00:00:00',0,120,'tlyrAccepted2'),"
        "('2026-11-21 09:12:30','jo','E1 ','2026-11-28 00:00:00',1,480,'tlyrDeclined'),"
        "('2026-11-21 09:12:00','jo','E2','2026-11-29 00:00:00',1,480,'tlyrDeclined'),"
        "('2026-11-21 09:12:00','jo','E3','2026-11-28 00:00:00',2,480,'tlyrDeclined'),"
        "('2026-11-21 09:12:00',x'00','E4','2026-11-28 00:00:00',1,480,'tlyrDeclined'),"
        "('2026-11-21 09:12:00','jo',x'00','2026-11-28 00:00:00',1,480,'tlyrDeclined'),"
        "('soon','jo','E5','2026-11-28 00:00:00',1,480,'tlyrDeclined'),"
        "('2026-11-21 09:12:00','jo','E6','2026-11-28 00:00:00',1,x'01','tlyrDeclined'),"
        "('2026-11-21 09:12:00','jo','E7','2026-11-28 23:59:00',0,30,'tlyrAccepted')");
    AnswersOfDay answers;
    EXPECT_TRUE(answers.read(folder.path(), day(u"11/28/2026")));
    EXPECT_EQ(answers.noteOf(QStringLiteral("E1")),
              QStringLiteral("Declined 8:00, 11/21/2026 9:12 by jo\nAccepted 2:00 at 2.0, "
                             "11/21/2026 14:05 by jo"));
    EXPECT_EQ(answers.noteOf(QStringLiteral("E7")),
              QStringLiteral("Accepted 0:30, 11/21/2026 9:12 by jo"));
    for (const char16_t* nobody : {u"E2", u"E3", u"E4", u"E5", u"E6", u""})
        EXPECT_EQ(answers.noteOf(QString::fromUtf16(nobody)), QString());
    folder.execute(addInFile, u"Drop Table [TLYR_Audit];");
    EXPECT_FALSE(answers.read(folder.path(), day(u"11/28/2026")));
    EXPECT_NE(answers.noteOf(QStringLiteral("E1")), QString()) << "what was known stays";
    EXPECT_FALSE(answers.read(folder.path(), day(u"11/29/2026")));
    EXPECT_EQ(answers.noteOf(QStringLiteral("E1")), QString()) << "but not for another day";
}

} // namespace
