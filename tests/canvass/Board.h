// The board as a test opens and works it.
#pragma once

#include "canvass/Tallyroom.h"
#include "common/ui/Grid.h"
#include "tests/support/WindowTest.h"

#include <QLabel>
#include <QLineEdit>

namespace tallyroom {

class BoardTest : public WindowTest {
protected:
    BoardTest() {
        folder.addHost(3);
        folder.associateAll();
    }

    // Shows the window, works it by `use`, and leaves it by "E&xit <<" if it is still open.
    void show(const std::function<void(QWidget&)>& use = {},
              const QString& user = QStringLiteral("Ann")) {
        const HostContext context = host.context(folder.path(), user);
        Tallyroom window(context);
        script.expectWindow(u"Tallyroom", [use](QWidget& board) {
            if (use)
                use(board);
            if (board.isVisible())
                clickButton(board, u"Command1");
        });
        window.showModally();
        EXPECT_FALSE(window.isVisible());
    }

    static Grid& grid(QWidget& board) { return child<Grid>(board, u"Grid"); }

    // The grid's rows with their heading, cells joined by "|".
    static QStringList lines(QWidget& board) {
        QStringList result;
        const Grid& shown = grid(board);
        for (int row = 0; row < shown.rows(); ++row) {
            QStringList cells;
            for (int column = 0; column < shown.columns(); ++column)
                cells.append(shown.text(row, column));
            result.append(cells.join(u'|'));
        }
        return result;
    }

    static QString status(QWidget& board) { return child<QLabel>(board, u"lblStatus").text(); }

    static void type(QWidget& board, QStringView box, QStringView text) {
        auto& edit = child<QLineEdit>(board, box);
        EXPECT_TRUE(edit.isVisible()) << edit.objectName().toStdString();
        edit.clear();
        edit.insert(text.toString());
    }

    // Selects grid rows, counted with the heading, from one end to the other.
    static void select(QWidget& board, int from, int to);
    // Opens the grid's pop-up menu with the right mouse button on the current row and chooses an
    // entry of it.
    static void answer(QWidget& board, QStringView entry);
};

inline void BoardTest::select(QWidget& board, int from, int to) {
    Grid& shown = grid(board);
    shown.clearSelection();
    shown.setCurrentIndex(shown.model()->index(from - 1, 0));
    shown.selectionModel()->select(QItemSelection(shown.model()->index(std::min(from, to) - 1, 0),
                                                  shown.model()->index(std::max(from, to) - 1, 0)),
                                   QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

} // namespace tallyroom
