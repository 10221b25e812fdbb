#include "common/ui/Grid.h"

#include "tests/support/Printing.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTest>

using namespace tallyroom;

namespace {

class GridTest : public testing::Test {
protected:
    GridTest() {
        const GridFill fill(grid);
        grid.setColumnCount(2);
        grid.setHeading(0, QStringLiteral("Code"), CellAlignment::Left);
        grid.setHeading(1, QStringLiteral("Total"), CellAlignment::Right);
        grid.addRow({QStringLiteral("E1"), QStringLiteral("01:00")});
        grid.addRow({QStringLiteral("E2\tx\ny"), QString()});
        grid.addRow({QStringLiteral("E\"3"), QStringLiteral("03:00")});
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

} // namespace
