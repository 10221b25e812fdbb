// The grid's columns are as wide as their texts, whatever was measured before.
#include "common/ui/Grid.h"
#include "tests/support/Printing.h"

#include <QLabel>
#include <gtest/gtest.h>
#include <random>

using namespace tallyroom;

namespace {

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

TEST(GridWidths, AreThoseOfMeasuringEachText) {
    std::mt19937 random(11);
    QLabel picture;
    for (int fill = 0; fill < 6; ++fill) {
        QFont font = picture.font();
        font.setPointSize(8 + fill / 2 * 3); // each font for two fills
        font.setItalic(fill / 2 == 1);
        picture.setFont(font);
        Grid grid;
        TextMeasurer measurer(&picture);
        const GridFill filling(grid);
        grid.setColumnCount(3);
        std::vector<int> widest(3, 0);
        AutoSizeColumns(grid, measurer, 0, -1, true);
        for (int row = 0; row < 200; ++row) {
            const QStringList cells{randomText(random), randomText(random), randomText(random)};
            grid.addRow(cells);
            AutoSizeColumns(grid, measurer, -1, -1, row == 0);
            for (int column = 0; column < 3; ++column) {
                auto& width = widest[static_cast<std::size_t>(column)];
                width = std::max(
                    width, QFontMetrics(picture.font()).horizontalAdvance(u'W' + cells.at(column)));
                ASSERT_EQ(grid.columnWidthOf(column), width) << cells.at(column).toStdString();
            }
        }
    }
}

} // namespace
