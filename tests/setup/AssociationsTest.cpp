#include "setup/Associations.h"
#include "setup/frmTLYRAssoc.h"
#include "setup/frmTLYRAssoc2.h"
#include "tests/support/WindowTest.h"

#include <QComboBox>

using namespace tallyroom;

namespace {

const QString mustChoose =
    QStringLiteral("You need to choose an absent code to associate with the ");

class AssociationsTest : public WindowTest {
protected:
    QStringList stored() const { return folder.rows(addInFile, u"Select * from [tlyr_assoc];"); }
    void store(const QString& values) const {
        folder.execute(addInFile, u"Delete * from [tlyr_assoc];");
        folder.execute(addInFile, QStringLiteral("Insert Into [tlyr_assoc] ([Accepted], "
                                                 "[Declined], [Accepted2], [Declined2]) Values "
                                                 "(%1);")
                                      .arg(values));
    }
    static QComboBox& combo(QWidget& window, int n) {
        return child<QComboBox>(window, QStringLiteral("Combo%1").arg(n));
    }
};

TEST_F(AssociationsTest, TwoCodesReplaceWhateverWasStored) {
    folder.addHost();
    store(QStringLiteral("'ota', 'OT', 'OTA2', 'OTD2'"));
    show<frmTLYRAssoc>([&](QWidget& window) {
        EXPECT_EQ(combo(window, 1).currentText(), QStringLiteral("OTA      Overtime OTA"));
        EXPECT_EQ(combo(window, 2).currentIndex(), -1) << "the stored code is no longer there";
        EXPECT_EQ(combo(window, 2).count(), 4);
        script.expectBox(mustChoose + QStringLiteral("declining of overtime."), QMessageBox::Ok,
                         QMessageBox::Critical);
        clickButton(window, u"Command2");
        EXPECT_EQ(stored(), QStringList(QStringLiteral("ota|OT|OTA2|OTD2")));
        combo(window, 2).setCurrentIndex(combo(window, 1).currentIndex());
        clickButton(window, u"Command2");
    });
    EXPECT_EQ(stored(), QStringList(QStringLiteral("OTA|OTA|Null|Null")));
}

TEST_F(AssociationsTest, FourCodesAreCheckedInOrder) {
    folder.addHost();
    show<frmTLYRAssoc2>([&](QWidget& window) {
        const QString endings[] = {QStringLiteral("acceptance of Time and a Half."),
                                   QStringLiteral("declining of Time and a Half."),
                                   QStringLiteral("acceptance of Double Time."),
                                   QStringLiteral("declining of Double Time.")};
        for (int n = 1; n <= 4; ++n) {
            script.expectBox(mustChoose + endings[n - 1], QMessageBox::Ok, QMessageBox::Critical);
            clickButton(window, u"Command2");
            combo(window, n).setCurrentIndex(n - 1);
        }
        clickButton(window, u"Command2");
    });
    EXPECT_EQ(stored(), QStringList(QStringLiteral("OTA|OTA2|OTD|OTD2")));
    show<frmTLYRAssoc2>([&](QWidget& window) {
        EXPECT_EQ(combo(window, 4).currentText(), QStringLiteral("OTD2     Overtime OTD2"));
        combo(window, 4).setCurrentIndex(0);
        clickButton(window, u"Command1");
    });
    EXPECT_EQ(stored(), QStringList(QStringLiteral("OTA|OTA2|OTD|OTD2"))) << "left by Exit";
}

TEST_F(AssociationsTest, BadCodesAreNeitherShownNorStoredAsOthers) {
    folder.executeNatively(hostFile, "INSERT INTO Absentee VALUES (x'41', 'bytes'), ('Z', x'00'), "
                                     "('OT' || char(0), 'cut')");
    folder.executeNatively(addInFile, "INSERT INTO tlyr_assoc VALUES ('Z', x'00', NULL, NULL)");
    show<frmTLYRAssoc>([&](QWidget& window) {
        EXPECT_EQ(combo(window, 1).count(), 1);
        EXPECT_EQ(combo(window, 1).currentText(), QStringLiteral("Z        "));
        EXPECT_EQ(combo(window, 2).currentIndex(), -1);
        clickButton(window, u"Command1");
    });
    EXPECT_EQ(errorNumberOf([&] {
                  Associations::save(folder.path(), {QStringLiteral("x'&'y"), QStringLiteral("Z")});
              }),
              3075);
    EXPECT_TRUE(stored().isEmpty()) << "the old codes go before the new ones come";
}

TEST_F(AssociationsTest, WithoutAbsentCodesOneWindowClosesAndTheOtherStays) {
    const QString noCodes = QStringLiteral("The Tallyroom cannot continue until you setup at least "
                                           "one absent code from Brightclock.");
    store(QStringLiteral("'A', 'B', Null, Null"));
    const HostContext context = host.context(folder.path());
    {
        frmTLYRAssoc window(context);
        script.expectBox(noCodes, QMessageBox::Ok, QMessageBox::Warning);
        window.showModally(); // comes back by itself
        EXPECT_TRUE(stored().isEmpty());
    }
    frmTLYRAssoc2 window(context);
    script.expectBox(noCodes, QMessageBox::Ok, QMessageBox::Warning);
    script.expectWindow(u"frmTLYRAssoc2", [&](QWidget& shown) {
        script.expectBox(mustChoose + QStringLiteral("acceptance of Time and a Half."),
                         QMessageBox::Ok, QMessageBox::Critical);
        clickButton(shown, u"Command2");
        clickButton(shown, u"Command1");
    });
    window.showModally();
}

} // namespace
