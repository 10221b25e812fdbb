#include "board/SortExpression.h"
#include "tests/support/Printing.h"

using namespace tallyroom;

namespace {

QString sorted(const QString& details, int* unknown = nullptr) {
    return sortExpression(details, {}, [unknown] {
        if (unknown)
            ++*unknown;
        else
            ADD_FAILURE() << "unknown element";
    });
}

QString element(int index, const QString& name, const QString& state, int direction) {
    return QStringLiteral("%1_State=%2|%1_Order=%3|%1_Direction=%4|Index%3=%1")
        .arg(name, state)
        .arg(index)
        .arg(direction);
}

TEST(SortExpression, TakesCheckedElementsInIndexOrder) {
    const QString a = element(0, QStringLiteral("Seniority Date"), QStringLiteral("true"), 1);
    const QString b = element(1, QStringLiteral("Position"), QStringLiteral("False"), 0);
    const QString c = element(2, QStringLiteral("Employee Name"), QStringLiteral("True"), 0);
    const QString bar(u'|');
    EXPECT_EQ(sorted(a + bar + b + bar + c), QStringLiteral("[sendate] desc, [emp_name] asc"));
    EXPECT_EQ(sorted(b), QString()) << "its Index0 is missing";
    EXPECT_EQ(sorted(a + bar + c), QStringLiteral("[sendate] desc")) << "Index1 is missing";
    EXPECT_EQ(sorted(QString()), QString());
    EXPECT_EQ(sorted(QStringLiteral("Index0")), QString()) << "an element named Index0, unchecked";
}

TEST(SortExpression, DamagedTextsAreReportedOrRaise) {
    int unknown = 0;
    const QString good = element(0, QStringLiteral("Employee Code"), QStringLiteral("True"), 0);
    const QString bad = element(1, QStringLiteral("Shoe Size"), QStringLiteral("True"), 0);
    EXPECT_EQ(sorted(good + u'|' + bad, &unknown), QStringLiteral("[emp_code] asc,  asc"));
    EXPECT_EQ(unknown, 1);
    EXPECT_EQ(errorNumberOf([] { sorted(QStringLiteral("Index0=1.5|1.5_State=perhaps")); }), 13);
    EXPECT_EQ(errorNumberOf(
                  [] { sorted(QStringLiteral("Index0=1.5|1.5_State=True|1.5_Direction=down")); }),
              13);
}

} // namespace
