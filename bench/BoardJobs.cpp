// Filling the board's grid, and the memory that it takes.
#include "bench/BenchData.h"
#include "bench/BoardWindow.h"
#include "bench/Jobs.h"
#include "bench/Measure.h"
#include "bench/PlainBoard.h"

#include <QApplication>
#include <cstdio>

namespace tallyroom::bench {

void gridFill() {
    const QString folder = keptFolder(5000, 30);
    withBoard(folder, [&](Tallyroom& window) {
        showEverything(window);
        auto& grid = child<Grid>(window, "Grid");
        QTableView view;
        BareModel model;
        view.resize(grid.size());
        view.setModel(&model);
        view.show();
        QCoreApplication::processEvents();
        const auto bare = [&] {
            return seconds([&] {
                model.setRows(sortedRows(folder));
                view.viewport()->repaint();
            });
        };
        const auto same = [&] { requireSame(codesOf(grid), model.firstColumn()); };
        const auto update = [&] {
            return seconds([&] {
                window.Update();
                grid.viewport()->repaint();
            });
        };
        const auto firstUpdate = [&] {
            forgetWidths();
            return update();
        };
        printRow("3 filling the grid, 5,000 rows, all columns, sorted",
                 inTurns(9, update, bare, same), 2.0);
        printRow("3 likewise the first time, with all texts to measure",
                 inTurns(9, firstUpdate, bare, same), 2.0);
        const auto weighAndUpdate = [&] {
            return seconds([&] {
                child<QAction>(window, "mnuMult").trigger();
                grid.viewport()->repaint();
            });
        };
        printRow("3 likewise when the weighing is switched over",
                 inTurns(8, weighAndUpdate, bare, [] {}), 2.0);
    });
}

void memoryOfTheBoard() {
    const PeakMemory peak;
    const std::size_t before = bytesInUse();
    std::size_t filled = 0;
    const QString folder = keptFolder(5000);
    withBoard(folder, [&](Tallyroom& window) {
        showEverything(window);
        filled = bytesInUse();
    });
    std::printf(
        "\nmemory: peak of the process %.0f MB with 5,000 employees and 5.2 million history "
        "rows; a row of the board %.0f bytes\n",
        peak.megabytes(), static_cast<double>(filled - before) / 5000);
}

} // namespace tallyroom::bench
