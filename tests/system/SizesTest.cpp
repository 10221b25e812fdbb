// Every window on many desktops: nothing lies outside and no text is cut off.
#include "tests/system/Tour.h"

#include <QAbstractItemView>
#include <QCalendarWidget>
#include <QCheckBox>
#include <QFile>
#include <QHeaderView>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QScrollArea>
#include <QStyleOptionFrame>
#include <gtest/gtest.h>

using namespace tallyroom;

namespace {

struct Desktop {
    const char* name;
    QSize pixels;
    double scale;
    int points;
};

const Desktop desktops[] = {{"Smallest", {640, 480}, 1, 12},
                            {"SmallestAsDesigned", {640, 480}, 1, 9},
                            {"Old", {800, 600}, 1, 9},
                            {"OldLargeFont", {800, 600}, 1, 12},
                            {"Tablet", {1024, 768}, 1.25, 9},
                            {"TabletLargeFont", {1024, 768}, 1.25, 11},
                            {"Laptop", {1366, 768}, 1, 10},
                            {"LaptopHugeFont", {1366, 768}, 1, 18},
                            {"FullHd175", {1920, 1080}, 1.75, 9},
                            {"FullHd200", {1920, 1080}, 2, 9},
                            {"FullHdHugeFont", {1920, 1080}, 1, 18},
                            {"Dense", {3840, 2160}, 2, 11}};

// A platform with one screen of that size.
QByteArray platform(const Desktop& desktop, const QString& file) {
    QFile screens(file);
    if (screens.open(QIODevice::WriteOnly))
        screens.write(
            QStringLiteral(R"({"screens":[{"name":"one","x":0,"y":0,"width":%1,)"
                           R"("height":%2,"logicalDpi":96,"logicalBaseDpi":96,"dpr":1}]})")
                .arg(desktop.pixels.width())
                .arg(desktop.pixels.height())
                .toUtf8());
    return "offscreen:configfile=" + file.toLocal8Bit();
}

int widthOf(const QWidget& widget, const QString& text) {
    return widget.fontMetrics().size(Qt::TextShowMnemonic, text).width();
}

// What the text would need, and the room that it has.
struct Room {
    int needed = 0;
    int given = 0;
};

Room roomInLine(const QLineEdit& box) {
    QStyleOptionFrame option;
    option.initFrom(&box);
    option.lineWidth =
        !box.hasFrame() ? 0 : box.style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, &box);
    const int contents =
        box.style()->subElementRect(QStyle::SE_LineEditContents, &option, &box).width();
    constexpr int margins = 4; // the toolkit's own, left and right
    return {widthOf(box, box.text()), contents - margins};
}

// A line that gives way to others says in its tooltip what it had to leave out.
bool isElided(const QLabel& label) {
    return !label.text().isEmpty() && label.toolTip() == label.text();
}

Room roomFor(const QWidget& control) {
    const auto* label = qobject_cast<const QLabel*>(&control);
    if (label && isElided(*label))
        return {};
    if (label)
        return label->wordWrap()
                   ? Room{label->heightForWidth(label->width()), label->height()}
                   : Room{label->text().isEmpty() ? 0 : label->sizeHint().width(), label->width()};
    if (qobject_cast<const QCheckBox*>(&control) || qobject_cast<const QRadioButton*>(&control))
        return {control.sizeHint().width(), control.width()};
    if (const auto* button = qobject_cast<const QPushButton*>(&control))
        return {widthOf(*button, button->text()), button->width() - 8};
    if (const auto* box = qobject_cast<const QLineEdit*>(&control))
        return roomInLine(*box);
    return {};
}

bool isControl(const QWidget& widget) {
    const QWidget* parent = widget.parentWidget();
    if (qobject_cast<const QAbstractItemView*>(parent) ||
        qobject_cast<const QCalendarWidget*>(parent) || parent->inherits("QToolBar"))
        return false; // scrolled, and put into an extension, by themselves
    return qobject_cast<const QLabel*>(&widget) || qobject_cast<const QAbstractButton*>(&widget) ||
           qobject_cast<const QLineEdit*>(&widget) || qobject_cast<const QComboBox*>(&widget) ||
           qobject_cast<const QAbstractSpinBox*>(&widget) ||
           qobject_cast<const QAbstractItemView*>(&widget);
}

QList<QWidget*> controlsOf(const QWidget& window) {
    QList<QWidget*> controls;
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        if (widget->isVisible() && widget->window() == &window && isControl(*widget))
            controls.append(widget);
    }
    return controls;
}

std::string nameOf(const QWidget& widget) {
    return (widget.window()->objectName() + u' ' + widget.objectName() + u' ' +
            QString::fromLatin1(widget.metaObject()->className()))
        .toStdString();
}

void lookAtText(const QWidget& control) {
    const Room room = roomFor(control);
    EXPECT_LE(room.needed, room.given) << nameOf(control) << " cuts its text";
    if (!qobject_cast<const QAbstractItemView*>(&control)) {
        EXPECT_GE(control.height(), control.fontMetrics().height()) << nameOf(control) << " is low";
    }
}

void lookAtHeading(const QTableView& table) {
    const QHeaderView& heading = *table.horizontalHeader();
    for (int column = 0; column < heading.count(); ++column) {
        const QString text = table.model()->headerData(column, Qt::Horizontal).toString();
        EXPECT_LE(widthOf(heading, text), heading.sectionSize(column))
            << nameOf(table) << " cuts " << text.toStdString();
    }
    EXPECT_GE(table.rowHeight(0), table.fontMetrics().height()) << nameOf(table);
}

void lookAtMenu(const QMenuBar& menus) {
    for (QAction* menu : menus.actions()) {
        if (menu->isVisible()) {
            EXPECT_TRUE(menus.rect().contains(menus.actionGeometry(menu)))
                << menu->text().toStdString();
        }
    }
}

void lookAtSizes(QWidget& window) {
    const QRect screen = window.screen()->availableGeometry();
    EXPECT_TRUE(screen.contains(window.frameGeometry()))
        << nameOf(window) << " is larger than the screen: " << window.width() << 'x'
        << window.height();
    const QList<QWidget*> controls = controlsOf(window);
    for (QWidget* control : controls) {
        auto* box = qobject_cast<QLineEdit*>(control);
        if (box && box->text().isEmpty() && box->objectName() != QStringLiteral("Search"))
            box->setText(box->objectName() == QStringLiteral("Text2")
                             ? QStringLiteral("24:00")
                             : QStringLiteral("12/28/2026"));
        EXPECT_EQ(control->visibleRegion().boundingRect(), control->rect())
            << nameOf(*control) << " is cut off at " << control->mapTo(&window, QPoint()).x() << ','
            << control->mapTo(&window, QPoint()).y();
        lookAtText(*control);
        for (const QWidget* other : controls) {
            EXPECT_FALSE(other != control && other->parent() == control->parent() &&
                         other->geometry().intersects(control->geometry()))
                << nameOf(*control) << " lies on " << nameOf(*other);
        }
    }
    for (const auto* table : window.findChildren<QTableView*>())
        lookAtHeading(*table);
    for (const auto* menus : window.findChildren<QMenuBar*>())
        lookAtMenu(*menus);
}

// Of a window that is too large by far: what it takes to leave it comes into sight.
void lookForButtons(QWidget& window) {
    for (QWidget* control : controlsOf(window)) {
        if (!qobject_cast<QPushButton*>(control))
            continue;
        for (QWidget* outer = control->parentWidget(); outer; outer = outer->parentWidget()) {
            if (auto* area = qobject_cast<QScrollArea*>(outer))
                area->ensureWidgetVisible(control);
        }
        EXPECT_EQ(control->visibleRegion().boundingRect(), control->rect())
            << nameOf(*control) << " is out of reach";
    }
}

void walk(const Desktop& desktop, const Tour::Look& look) {
    const QTemporaryDir folder;
    qputenv("TALLYROOM_REGISTRY", folder.filePath(QStringLiteral("registry.reg")).toLocal8Bit());
    qputenv("QT_SCALE_FACTOR", QByteArray::number(desktop.scale));
    qputenv("QT_QPA_PLATFORM", platform(desktop, folder.filePath(QStringLiteral("screens.json"))));
    int count = 1;
    char name[] = "tests_sizes";
    char* arguments[] = {name, nullptr};
    QApplication application(count, arguments);
    QApplication::setQuitOnLastWindowClosed(false);
    QFont font = QApplication::font();
    font.setPointSize(desktop.points);
    QApplication::setFont(font);
    Tour(look).walk();
}

class EveryWindow : public testing::TestWithParam<Desktop> {};

TEST_P(EveryWindow, FitsTheDesktop) {
    walk(GetParam(), lookAtSizes);
}

TEST(TooSmallADesktop, ScrollsToTheButtons) {
    walk({"Tiny", {400, 300}, 1, 12}, lookForButtons);
}

INSTANTIATE_TEST_SUITE_P(Desktops, EveryWindow, testing::ValuesIn(desktops),
                         [](const auto& one) { return std::string(one.param.name); });

} // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
