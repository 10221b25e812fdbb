#include "host/DatePicker.h"
#include "host/SplashPicture.h"
#include "host/frmMenu.h"
#include "tests/host/HostDataFolder.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QDialog>
#include <QTableView>
#include <QTimer>
#include <gtest/gtest.h>

namespace tallyroom::host {
namespace {

// Acts on the next modal window, which the action has to close.
void whenModal(const std::function<void(QDialog&)>& act) {
    QTimer::singleShot(0, [act] {
        auto* window = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(window, nullptr);
        act(*window);
    });
}

TEST(DatePicker, ReportsThePickedDayAndOnlyThat) {
    const ObjectRef picker = makeObject<DatePickerObject>();
    const ObjectRef month = picker.property(QStringLiteral("MonthView1")).toObject();
    const Date shown = Dates::fromQDate(QDate(2024, 2, 29));
    const Date other = Dates::fromQDate(QDate(2024, 3, 1));
    for (const auto end : {QDialog::Rejected, QDialog::Accepted}) {
        month.setProperty(QStringLiteral("Value"), shown);
        whenModal([end](QDialog& window) {
            auto* calendar = window.findChild<QCalendarWidget*>(QStringLiteral("MonthView1"));
            EXPECT_EQ(calendar->selectedDate(), QDate(2024, 2, 29));
            calendar->setSelectedDate(QDate(2024, 3, 1));
            window.done(end);
        });
        picker.call(QStringLiteral("Show"), {Variant(1)});
        const bool isPicked = end == QDialog::Accepted;
        EXPECT_EQ(picker.property(QStringLiteral("WasPicked")).toBoolean(), isPicked);
        EXPECT_EQ(month.property(QStringLiteral("Value")).toDate(), isPicked ? other : shown);
    }
}

TEST(Menu, HandlersOpenTheirScreensByName) {
    const HostDataFolder folder;
    const auto database = Workspace::openHostOptions(folder.path());
    const HostData data = readHostData(*database);
    auto window = std::make_unique<frmMenu>(database, data, drawSplash());
    const ObjectRef menu = makeObject<MenuObject>(window.get());
    const struct {
        const char* handler;
        const char* title;
    } screens[] = {
        {"ttedit_click", "Time and Attendance Transactions"},
        {"mnupms_click", "Daily Schedule"},
        {"mnuchangesched_click", "Weekly Schedule"},
        {"mnuemployeesch_click", "Monthly Schedule"},
        {"mnu_ot_anal_click", "Overtime Analysis"},
    };
    for (const auto& screen : screens) {
        whenModal([&screen](QDialog& opened) {
            EXPECT_EQ(opened.windowTitle(), QString::fromLatin1(screen.title));
            EXPECT_GT(opened.findChild<QTableView*>(QStringLiteral("Grid"))->model()->rowCount(),
                      1);
            opened.reject();
        });
        menu.call(QString::fromLatin1(screen.handler));
    }
    window.reset();
    EXPECT_ANY_THROW(menu.call(QStringLiteral("ttedit_click")));
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
