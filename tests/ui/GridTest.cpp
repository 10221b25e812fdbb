#include "common/ui/GridFill.h"

#include "tests/support/Printing.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QScrollBar>
#include <QTest>
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
