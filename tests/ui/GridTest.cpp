#include "common/ui/GridFill.h"

#include "common/ui/PendingInput.h"
#include "tests/support/Printing.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QScrollBar>
#include <QTest>
#include <QTimer>
#include <random>

using namespace tallyroom;

namespace {

class GridTest : public testing::Test {
protected:
    GridTest() {
        fill({{QStringLiteral("E1"), QStringLiteral("01:00")},
              {QStringLiteral("E2\tx\ny"), QString()},
              {QStringLiteral("E\"3"), QStringLiteral("03:00")}});
    }
    void fill(const std::vector<QStringList>& rows) {
        GridFill filling(grid);
        filling.setColumns(
            {{QStringLiteral("Code")}, {QStringLiteral("Total"), CellAlignment::Right}});
        for (const QStringList& row : rows)
            filling.addRow(row);
        filling.removeEmptyRow();
    }
    // What Ctrl+C puts on the clipboard.
    QString copied() {
        QGuiApplication::clipboard()->setText(QStringLiteral("before"));
        QTest::keyClick(&grid, Qt::Key_C, Qt::ControlModifier);
        return QGuiApplication::clipboard()->text();
    }
    Grid grid;
};

TEST_F(GridTest, CopiesTheSelectedRowsUnderTheirHeadings) {
    EXPECT_EQ(copied(), QStringLiteral("before")) << "nothing is selected";
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, Qt::NoModifier,
                      grid.visualRect(grid.model()->index(1, 0)).center());
    EXPECT_EQ(copied(), QStringLiteral("Code\tTotal\nE2 x y\t\n"));
    QTest::keyClick(&grid, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(copied(), QStringLiteral("Code\tTotal\nE1\t01:00\nE2 x y\t\n\"E\"\"3\"\t03:00\n"));
}

TEST_F(GridTest, AFillLeavesTheUserWhereHeWas) {
    const std::vector<QStringList> rows(100, {QStringLiteral("E1")});
    grid.resize(300, 200);
    grid.show();
    fill(rows);
    grid.setCurrentIndex(grid.model()->index(60, 0));
    constexpr int scrolled = 9; // away from the current row
    grid.verticalScrollBar()->setValue(scrolled);
    fill(rows);
    EXPECT_EQ(grid.verticalScrollBar()->value(), scrolled);
    EXPECT_EQ(grid.currentIndex().row(), 60);
    EXPECT_FALSE(grid.selectionModel()->hasSelection());
    fill({});
    fill({rows.front()});
    EXPECT_EQ(grid.currentIndex().row(), 0);
}

// What the menu acts on is what the user sees selected: rows from 1, none as {0, 0}.
TEST_F(GridTest, ThePopupComesWithTheRowThatItWasAskedFor) {
    grid.resize(300, 400);
    grid.show();
    int popups = 0;
    QObject::connect(&grid, &Grid::popupRequested, &grid, [&] { ++popups; });
    const auto at = [&](int row) {
        return row == 0 ? QPoint(20, 390) // below the rows
                        : grid.visualRect(grid.model()->index(row - 1, 0)).center();
    };
    const auto selected = [&](int first, int last) {
        return grid.selectedRows().first == first && grid.selectedRows().last == last;
    };
    const struct {
        int from, to; // selected before, from the current row's other end
        int under;    // 0 beside the rows, −1 for the key
        int first, last;
    } cases[] = {{0, 0, 2, 2, 2}, {1, 1, 3, 3, 3}, {1, 2, 2, 1, 2},  {1, 2, 3, 3, 3},
                 {2, 2, 0, 2, 2}, {0, 0, 0, 0, 0}, {0, 0, -1, 2, 2}, {3, 1, -1, 1, 3}};
    for (const auto& c : cases) {
        grid.clearSelection();
        grid.setCurrentRow(2);
        if (c.from != 0) {
            QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, at(c.from));
            QTest::mouseClick(grid.viewport(), Qt::LeftButton, Qt::ShiftModifier, at(c.to));
        }
        if (c.under < 0)
            QTest::keyClick(&grid, Qt::Key_F10, Qt::ShiftModifier);
        else
            QTest::mouseClick(grid.viewport(), Qt::RightButton, {}, at(c.under));
        EXPECT_TRUE(selected(c.first, c.last)) << &c - cases;
    }
    EXPECT_EQ(popups, std::ssize(cases));
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, at(1));
    QTest::mouseClick(grid.viewport(), Qt::RightButton, {}, at(2));
    QTest::keyClick(&grid, Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_TRUE(selected(2, 3)) << "extended from the row that the button selected";
    grid.clearSelection();
    grid.setCurrentRow(2);
    QTest::keyClick(&grid, Qt::Key_Down);
    EXPECT_TRUE(selected(2, 2)) << "the current row comes first";
    QTest::keyClick(&grid, Qt::Key_Down);
    EXPECT_TRUE(selected(3, 3));
}

TEST_F(GridTest, InputOfALongCommandIsDroppedAndTimersComeLater) {
    grid.show();
    QTimer timer;
    bool rang = false;
    QObject::connect(&timer, &QTimer::timeout, &grid, [&] { rang = true; });
    timer.start(0);
    const auto press = [&] {
        QCoreApplication::postEvent(
            &grid, new QKeyEvent(QEvent::KeyPress, Qt::Key_A, Qt::ControlModifier));
    };
    press();
    PendingInput::drop();
    EXPECT_TRUE(!grid.selectionModel()->hasSelection() && !rang);
    press();
    QCoreApplication::processEvents();
    EXPECT_TRUE(grid.selectionModel()->hasSelection() && rang);
}

TEST_F(GridTest, LettersFindByTheHeadingWhateverCellIsCurrent) {
    grid.setSearchHeading(QStringLiteral("Total"));
    grid.setCurrentIndex(grid.model()->index(0, 0));
    QTest::keyClicks(&grid, QStringLiteral("03"));
    EXPECT_EQ(grid.selectedRows().first, 3);
}

// Letters that pull together or join, digits, signs, and scripts that are shaped.
QString randomText(std::mt19937& random) {
    static const QString letters =
        QStringLiteral("AVToWyfliLT.,-'17 \u00e9\u0301\u0628\u0644\u0627\u0915\u094d\u0937\t");
    QString text;
    for (auto length = random() % 12; length > 0; --length)
        text +=
            letters.at(static_cast<qsizetype>(random() % static_cast<unsigned>(letters.size())));
    return text;
}

// Whatever was measured before.
TEST(GridFill, WidthsAreThoseOfMeasuringEachText) {
    std::mt19937 random(11);
    QLabel picture;
    for (int font = 0; font < 6; ++font) {
        QFont measured = picture.font();
        measured.setPointSize(8 + font / 2 * 3); // each font for two grids
        measured.setItalic(font / 2 == 1);
        picture.setFont(measured);
        Grid grid;
        std::vector<int> widest(3, 0);
        for (int row = 0; row < 200; ++row) {
            const QStringList cells{randomText(random), randomText(random), randomText(random)};
            {
                GridFill fill(grid);
                fill.setColumns(std::vector<TextTable::Column>(3));
                fill.addRow(cells);
                fill.AutoSizeColumns(TextWidths::in(picture), -1, -1, row == 0);
            }
            for (std::size_t column = 0; column < 3; ++column)
                widest[column] = std::max(
                    widest[column],
                    QFontMetrics(picture.font()).horizontalAdvance(u'W' + cells.at(column)));
            ASSERT_EQ(grid.widths(), widest) << cells.join(u'|').toStdString();
        }
    }
}

} // namespace
