#include "host/frmBucket.h"
#include "tests/support/DialogScript.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QTableView>
#include <gtest/gtest.h>

namespace tallyroom::host {
namespace {

// A list of an add-in.
class FakeList : public LateBoundObject {
public:
    explicit FakeList(QStringList& entries) {
        addMethod(QStringLiteral("Clear"), [&entries](const Arguments&) {
            entries.clear();
            return Variant();
        });
        addMethod(QStringLiteral("AddItem"), [&entries](const Arguments& args) {
            entries << argument(args, 0).toText();
            return Variant();
        });
    }
};

HostData threeEmployees() {
    HostData data;
    data.employees = {
        {QStringLiteral("0001"),
         QStringLiteral("Ames, Ann"),
         QStringLiteral("A"),
         QStringLiteral("DAY"),
         {QStringLiteral("WELDER")}},
        {QStringLiteral("00'2"),
         QStringLiteral("O'Neill, Bo"),
         QStringLiteral("B"),
         QStringLiteral("NGT"),
         {}},
        {QStringLiteral("0003"),
         QStringLiteral("Núñez, Cy"),
         QStringLiteral("B"),
         QStringLiteral("DAY"),
         {QStringLiteral("PACKER"), QStringLiteral("WELDER")}},
    };
    data.shifts = {{QStringLiteral("DAY"), {}, {}}, {QStringLiteral("NGT"), {}, {}}};
    return data;
}

class BucketTest : public testing::Test {
protected:
    ObjectRef bucket() { return makeObject<BucketObject>(m_selection, m_data); }

    // Opens the form, acts on it, and ends it.
    void show(const ObjectRef& bucket, QDialog::DialogCode end, const DialogScript::Action& act) {
        m_script.expectWindow(u"frmBucket", [end, act](QWidget& form) {
            act(form);
            qobject_cast<QDialog*>(&form)->done(end);
        });
        bucket.call(QStringLiteral("Show"), {Variant(1)});
    }

    DialogScript m_script;
    HostData m_data = threeEmployees();
    BucketSelection m_selection{m_data.employees};
    QStringList m_entries;
    ObjectRef m_list = makeObject<FakeList>(m_entries);
};

void clearAll(QWidget& form) {
    clickButton(form, u"ClearShown");
}

TEST_F(BucketTest, TheFilterCompletesAConditionOnTheCode) {
    EXPECT_EQ(m_selection.employeeFilter(), QStringLiteral("in ('0001','00''2','0003')"));
    EXPECT_EQ(m_selection.select({QStringLiteral("0003"), QStringLiteral("0001")}), QStringList());
    EXPECT_EQ(m_selection.employeeFilter(), QStringLiteral("in ('0001','0003')"));
    EXPECT_EQ(m_selection.select({QStringLiteral("0001"), QStringLiteral("9")}),
              QStringList{QStringLiteral("9")});
    EXPECT_EQ(m_selection.employeeFilter(), QStringLiteral("in ('0001','0003')"));
    m_selection.select({});
    EXPECT_EQ(bucket().property(QStringLiteral("employeefilter")).toText(),
              QStringLiteral("in ('')"));
}

TEST_F(BucketTest, ARememberedListIsFilledOnceMoreByOk) {
    const ObjectRef object = bucket();
    object.call(QStringLiteral("FillSpot"), {Variant(m_list)});
    EXPECT_EQ(m_entries.size(), 3);
    EXPECT_EQ(m_entries[1], QStringLiteral("00'2     O'Neill, Bo"));
    show(object, QDialog::Rejected, clearAll);
    EXPECT_EQ(m_entries.size(), 3);
    EXPECT_EQ(m_selection.employeeFilter(), QStringLiteral("in ('0001','00''2','0003')"));

    object.call(QStringLiteral("FillSpot"), {Variant(m_list)});
    show(object, QDialog::Accepted, clearAll);
    EXPECT_EQ(m_entries, QStringList());

    show(object, QDialog::Accepted, [](QWidget& form) { clickButton(form, u"SelectShown"); });
    EXPECT_EQ(m_entries, QStringList()) << "the list was forgotten after the window before";
    object.call(QStringLiteral("fillalist"), {Variant(m_list)});
    EXPECT_EQ(m_entries.size(), 3);
}

TEST_F(BucketTest, SelectsWhatTheCriteriaShow) {
    const struct {
        const char* box;
        int choice;
        const char* search;
        const char* expected;
    } cases[] = {
        {"Department", 2, "", "in ('00''2','0003')"},
        {"Shift", 1, "", "in ('0001','0003')"},
        {"Qualification", 1, "", "in ('0003')"},
        {"Qualification", 2, "", "in ('0001','0003')"},
        {"Department", 0, "o'n", "in ('00''2')"},
        {"Department", 0, "0003", "in ('0003')"},
        {"Department", 2, "ann", "in ('')"},
    };
    for (const auto& wanted : cases) {
        show(bucket(), QDialog::Accepted, [&wanted](QWidget& form) {
            clearAll(form);
            EXPECT_EQ(child<QLabel>(form, u"Count").text(), QStringLiteral("0 of 3 selected"));
            child<QComboBox>(form, QString::fromLatin1(wanted.box)).setCurrentIndex(wanted.choice);
            child<QLineEdit>(form, u"Search").setText(QString::fromLatin1(wanted.search));
            clickButton(form, u"SelectShown");
        });
        EXPECT_EQ(m_selection.employeeFilter(), QString::fromLatin1(wanted.expected))
            << wanted.box << wanted.choice << wanted.search;
    }
}

TEST_F(BucketTest, AllowSortDecidesWhetherAHeadingCanBeClicked) {
    const ObjectRef object = bucket();
    for (const bool allowed : {false, true}) {
        object.setProperty(QStringLiteral("AllowSort"), Variant(allowed));
        EXPECT_EQ(object.property(QStringLiteral("allowsort")).toBoolean(), allowed);
        show(object, QDialog::Rejected, [allowed](QWidget& form) {
            EXPECT_EQ(child<QTableView>(form, u"Employees").isSortingEnabled(), allowed);
        });
    }
}

} // namespace
} // namespace tallyroom::host
