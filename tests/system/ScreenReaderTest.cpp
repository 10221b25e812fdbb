// What a screen reader finds in every window, asked through the toolkit's accessible objects.
#include "tests/system/Tour.h"

#include <QAbstractSpinBox>
#include <QAccessible>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QToolButton>
#include <set>

using namespace tallyroom;

namespace {

QAccessibleInterface* readerOf(QWidget& widget) {
    return QAccessible::queryAccessibleInterface(&widget);
}

bool isOwnControl(const QWidget& widget) {
    const bool isPart = widget.objectName().startsWith(QStringLiteral("qt_")) &&
                        !widget.objectName().startsWith(QStringLiteral("qt_calendar_"));
    return !isPart && widget.isVisible() &&
           (qobject_cast<const QAbstractButton*>(&widget) ||
            qobject_cast<const QLineEdit*>(&widget) || qobject_cast<const QComboBox*>(&widget) ||
            qobject_cast<const QAbstractSpinBox*>(&widget) ||
            qobject_cast<const QListWidget*>(&widget) ||
            widget.objectName() == QStringLiteral("Grid"));
}

void lookAtNames(QWidget& window) {
    if (window.objectName() == QStringLiteral("ReportPreview"))
        return; // the toolkit's own
    std::set<QString> names;
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        if (widget->window() != &window || !isOwnControl(*widget) ||
            qobject_cast<QAbstractSpinBox*>(widget->parentWidget()))
            continue;
        const QString name = readerOf(*widget)->text(QAccessible::Name);
        EXPECT_FALSE(name.isEmpty())
            << window.objectName().toStdString() << ' ' << widget->objectName().toStdString();
        const auto* button = qobject_cast<QPushButton*>(widget);
        if (button && button->text().isEmpty()) {
            EXPECT_TRUE(names.insert(name).second) << "twice: " << name.toStdString();
        }
    }
}

// Cells are told by their column, and stay so when the board is filled anew under the reader.
void readBoard(QWidget& board) {
    auto& grid = child<QTableView>(board, u"Grid");
    // As the toolkit tells it where a screen reader runs, which the offscreen platform has none of.
    QObject::connect(grid.model(), &QAbstractItemModel::modelReset, &grid, [&grid] {
        QAccessibleTableModelChangeEvent event(&grid, QAccessibleTableModelChangeEvent::ModelReset);
        readerOf(grid)->tableInterface()->modelChange(&event);
    });
    for (int fill = 0; fill < 3; ++fill) {
        QAccessibleTableInterface* table = readerOf(grid)->tableInterface();
        ASSERT_TRUE(table);
        ASSERT_TRUE(grid.currentIndex().isValid());
        QAccessibleInterface* cell = table->cellAt(2, 1);
        ASSERT_TRUE(cell && cell->isValid() && cell->tableCellInterface()) << fill;
        EXPECT_EQ(cell->text(QAccessible::Name), grid.model()->index(2, 1).data().toString());
        EXPECT_EQ(cell->text(QAccessible::Description), QStringLiteral("Name, row 3"));
        EXPECT_EQ(cell->tableCellInterface()->rowIndex(), 2);
        EXPECT_EQ(cell->tableCellInterface()->columnIndex(), 1);
        grid.setCurrentIndex(grid.model()->index(fill, 1));
        trigger(board, u"mnuRefresh");
    }
}

TEST(ScreenReader, FindsANameForEveryControlAndAPlaceForEveryCell) {
    bool isRead = false;
    Tour([&](QWidget& window) {
        lookAtNames(window);
        if (window.objectName() == QStringLiteral("Tallyroom") && !std::exchange(isRead, true))
            readBoard(window);
    }).walk();
    EXPECT_TRUE(isRead);
}

} // namespace
