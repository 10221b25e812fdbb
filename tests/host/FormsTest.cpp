#include "host/DatePicker.h"
#include "host/SplashPicture.h"
#include "host/frmMenu.h"
#include "host/frmStart.h"
#include "tests/host/HostDataFolder.h"
#include "tests/support/DialogScript.h"

#include <QCalendarWidget>
#include <QDialog>
#include <QLineEdit>
#include <QSettings>
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

TEST(Start, ListsNoSiteThatCannotBeOpenedAndShowsNoPassword) {
    const QTemporaryDir settings;
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, settings.path());
    DialogScript script;
    frmStart start;
    start.show();
    const struct {
        QString address;
        QString answer;
    } cases[] = {
        {QStringLiteral("postgresql://ann:secret@db/shop/north"),
         QStringLiteral("'postgresql://…' is not a valid path: it must not contain a password. "
                        "Keep the password in the file .pgpass.")},
        {QStringLiteral("ann:secret@db"),
         QStringLiteral("The address of a site begins with postgresql://.")},
    };
    for (const auto& entry : cases) {
        script.expectWindow(u"SiteAddress", [&](QWidget& window) {
            window.findChild<QLineEdit*>()->setText(entry.address);
            qobject_cast<QDialog*>(&window)->accept();
        });
        script.expectBox(QStringLiteral("Error 3044\n\n") + entry.answer, QMessageBox::Ok,
                         QMessageBox::Critical, QStringLiteral("Brightclock"));
        clickButton(start, u"Site");
        EXPECT_EQ(start.folder(), QString());
    }
}

} // namespace
} // namespace tallyroom::host
