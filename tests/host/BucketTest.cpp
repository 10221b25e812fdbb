#include "common/RunError.h"
#include "host/BucketObject.h"
#include "host/frmBucket.h"
#include "tests/host/HostDataFolder.h"
#include "tests/support/DialogScript.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
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
    ObjectRef bucket() { return makeObject<BucketObject>(m_selection, m_buckets, m_data); }

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
    NamedBuckets m_buckets{QString(), QString()};
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

// The form of a user who works on a folder, and picks, saves and removes buckets by name.
class NamedBucketTest : public testing::Test {
protected:
    NamedBucketTest() { read(); }

    void read() {
        m_database = Workspace::openHostOptions(m_folder.path());
        m_data = readHostData(*m_database);
        m_buckets = std::make_unique<NamedBuckets>(m_folder.path(), QStringLiteral("jo"));
    }

    // What the form ends with.
    std::vector<bool> show(const std::function<void(frmBucket&)>& act) {
        BucketSelection selection(m_data.employees);
        frmBucket form(selection, *m_buckets, m_data, false, nullptr);
        form.show();
        act(form);
        m_name = form.chosenName();
        return form.checked();
    }

    void saveAs(frmBucket& form, QStringView name, QStringView kept) {
        m_script.expectWindow(u"frmBucketName", [name, kept](QWidget& dialog) {
            child<QLineEdit>(dialog, u"BucketName").setText(name.toString());
            child<QRadioButton>(dialog, kept).setChecked(true);
            qobject_cast<QDialog*>(&dialog)->accept();
        });
        clickButton(form, u"SaveBucket");
    }

    static auto pick(int row) {
        return [row](frmBucket& form) { child<QListWidget>(form, u"Buckets").setCurrentRow(row); };
    }

    DialogScript m_script;
    HostDataFolder m_folder;
    std::shared_ptr<Database> m_database;
    HostData m_data;
    std::unique_ptr<NamedBuckets> m_buckets;
    QString m_name;
};

TEST_F(NamedBucketTest, ABucketIsPickedByNameAndFollowsItsCriteria) {
    const auto department = show([this](frmBucket& form) {
        child<QComboBox>(form, u"Department").setCurrentIndex(1);
        clickButton(form, u"SelectShown");
        saveAs(form, u"Day crew", u"KeepChosen");
        saveAs(form, u"Assembly", u"KeepCriteria");
    });
    EXPECT_EQ(m_name, QStringLiteral("Assembly"));
    m_buckets->choose(m_name);
    m_database->execute(
        QStringLiteral("Update [Employee] set [emp_dept] = '%1';")
            .arg(std::get<BucketCriteria>(m_buckets->chosen()->content).department));
    read();
    ASSERT_TRUE(m_buckets->chosen());
    EXPECT_EQ(m_buckets->chosen()->name, QStringLiteral("Assembly"));
    EXPECT_EQ(show(pick(1)), std::vector<bool>(m_data.employees.size(), true));
    EXPECT_EQ(show(pick(2)), department) << "codes stay codes";
    EXPECT_EQ(m_name, QStringLiteral("Day crew"));

    show([](frmBucket& form) {
        pick(2)(form);
        clickButton(form, u"RemoveBucket");
    });
    read();
    EXPECT_EQ(m_buckets->all().size(), 1U);
}

TEST_F(NamedBucketTest, TheMasterUsersBucketsAreThereForAllAndHisChoiceIsHisOwn) {
    const QString name = QStringLiteral("Night");
    NamedBuckets masters(m_folder.path(), QStringLiteral("Master"));
    masters.save({name, QStringList()});
    masters.choose(name);
    read();
    EXPECT_TRUE(m_buckets->find(name));
    EXPECT_FALSE(m_buckets->chosen());
    EXPECT_TRUE(NamedBuckets(m_folder.path(), QStringLiteral("MASTER")).chosen());
}

TEST_F(NamedBucketTest, WhatCannotBeKeptIsSaidAndChangesNothing) {
    m_database->execute(QStringLiteral("Drop table [FormOptions];"));
    EXPECT_THROW(m_buckets->save({QStringLiteral("Lost"), QStringList()}), RunError);
    EXPECT_TRUE(m_buckets->all().empty());
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
