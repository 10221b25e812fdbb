// The kinds of answer to an offer of overtime: one table says of each where it is kept.
#pragma once

#include <QString>

namespace tallyroom {

// Values of the audit's Action column.
enum class AuditAction { Accepted = 0, Declined = 1, Deleted = 2 };

QString actionName(AuditAction action); // "Accepted", "Declined", "Deleted"

// What an hour of overtime counts: time and a half, or double time.
enum class Rate { OneAndAHalf, Double };

constexpr double factorOf(Rate rate) {
    return rate == Rate::Double ? 2 : 1.5;
}
QString rateName(Rate rate); // "1.5", "2.0"
// The rate of an audit entry, whose column need not be one of the table below.
Rate rateOf(const QString& historyColumn);

struct AnswerKind {
    const char16_t* association; // column of tlyr_assoc that holds the absent code
    const char16_t* history;     // column of TimeHistory that takes the minutes
    const char16_t* board;       // column of tlyrTemp that sums them
    AuditAction action;
    Rate rate;

    // The column of tlyrTemp that counts the same minutes at their rate: named without the "x".
    const char16_t* weighed() const { return board + 1; }
};

// In the order of the history's columns. Where rates are not told apart, all is time and a half.
inline constexpr AnswerKind answerKinds[] = {
    {u"Accepted", u"tlyrAccepted", u"xT15Accepted", AuditAction::Accepted, Rate::OneAndAHalf},
    {u"Accepted2", u"tlyrAccepted2", u"xT20Accepted", AuditAction::Accepted, Rate::Double},
    {u"Declined", u"tlyrDeclined", u"xT15Declined", AuditAction::Declined, Rate::OneAndAHalf},
    {u"Declined2", u"tlyrDeclined2", u"xT20Declined", AuditAction::Declined, Rate::Double},
};

// The action is an answer: accepted or declined.
constexpr const AnswerKind& answerKind(AuditAction action, Rate rate) {
    Q_ASSERT(action != AuditAction::Deleted);
    return answerKinds[2 * static_cast<int>(action) + static_cast<int>(rate)];
}

} // namespace tallyroom
