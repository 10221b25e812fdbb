#include "host/DatePicker.h"
#include "host/SplashPicture.h"
#include "host/frmMenu.h"
#include "tests/host/HostDataFolder.h"
#include "tests/support/DialogScript.h"

#include <QCalendarWidget>
#include <QDialog>
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

} // namespace
} // namespace tallyroom::host
