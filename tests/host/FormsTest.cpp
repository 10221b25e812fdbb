#include "host/DatePicker.h"
#include "host/SplashPicture.h"
#include "host/frmMenu.h"
#include "tests/host/HostDataFolder.h"
#include "tests/support/DialogScript.h"

#include <QCalendarWidget>
#include <QDialog>
#include <QDialogButtonBox>
#include <QPushButton>
#include <gtest/gtest.h>

namespace tallyroom::host {
namespace {

TEST(DatePicker, ReportsThePickedDayAndOnlyThat) {
    DialogScript script;
    const ObjectRef picker = makeObject<DatePickerObject>();
    const ObjectRef month = picker.property(QStringLiteral("MonthView1")).toObject();
    const Date shown = Dates::fromQDate(QDate(2024, 2, 29));
    const Date other = Dates::fromQDate(QDate(2024, 3, 1));
    for (const auto end : {QDialog::Rejected, QDialog::Accepted}) {
        month.setProperty(QStringLiteral("Value"), shown);
        script.expectWindow(u"frmDatePicker", [end](QWidget& window) {
            auto& calendar = child<QCalendarWidget>(window, u"MonthView1");
            EXPECT_EQ(calendar.selectedDate(), QDate(2024, 2, 29));
            calendar.setSelectedDate(QDate(2024, 3, 1));
            qobject_cast<QDialog*>(&window)->done(end);
        });
        picker.call(QStringLiteral("Show"), {Variant(1)});
        const bool isPicked = end == QDialog::Accepted;
        EXPECT_EQ(picker.property(QStringLiteral("WasPicked")).toBoolean(), isPicked);
        EXPECT_EQ(month.property(QStringLiteral("Value")).toDate(), isPicked ? other : shown);
    }
}

TEST(Menu, AHandlerThatIsCalledAfterItsEndFails) {
    const HostDataFolder folder;
    const auto database = Workspace::openHostOptions(folder.path());
    const HostData data = readHostData(*database);
    auto window = std::make_unique<frmMenu>(database, data, drawSplash());
    const ObjectRef menu = makeObject<MenuObject>(window.get());
    window.reset();
    EXPECT_ANY_THROW(menu.call(QStringLiteral("ttedit_click")));
}

TEST(Menu, EachScreenIsClosedByItsButton) {
    const struct {
        const char* handler;
        QStringView screen;
    } cases[] = {
        {"ttedit_click", u"frmTransactions"},     {"mnupms_click", u"frmSchedule"},
        {"mnuchangesched_click", u"frmSchedule"}, {"mnuemployeesch_click", u"frmSchedule"},
        {"mnu_ot_anal_click", u"frmOvertime"},
    };
    const HostDataFolder folder;
    const auto database = Workspace::openHostOptions(folder.path());
    const HostData data = readHostData(*database);
    frmMenu window(database, data, drawSplash());
    const ObjectRef menu = makeObject<MenuObject>(&window);
    DialogScript script;
    for (const auto& c : cases) {
        script.expectWindow(c.screen, [](QWidget& screen) {
            child<QDialogButtonBox>(screen, u"Buttons").button(QDialogButtonBox::Close)->click();
        });
        menu.call(QString::fromLatin1(c.handler));
    }
}

TEST(Splash, IsAPictureOnWhichBlackTextReadsWell) {
    const ObjectRef splash = makeObject<SplashPictureObject>(drawSplash());
    const QImage picture =
        QImage::fromData(splash.property(QStringLiteral("Picture")).toBytes(), "PNG");
    ASSERT_GE(picture.width(), 1024);
    for (int y = 0; y < picture.height(); y += 7) {
        for (int x = 0; x < picture.width(); x += 7)
            ASSERT_GT(qGray(picture.pixel(x, y)), 190);
    }
}

} // namespace
} // namespace tallyroom::host
