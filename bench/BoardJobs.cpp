// The board's window: filling the grid, opening it, and the memory that it takes.
#include "addin/TLYR.h"
#include "bench/BenchData.h"
#include "bench/Jobs.h"
#include "bench/Measure.h"
#include "bench/Plain.h"
#include "canvass/Tallyroom.h"
#include "common/ui/Grid.h"

#include <QAbstractTableModel>
#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QPushButton>
#include <QTimer>
#include <cstdio>
#include <exception>
#include <stdexcept>

namespace tallyroom::bench {

namespace {

template<class T>
T& child(QWidget& window, const char* name) {
    if (auto* found = window.findChild<T*>(QString::fromLatin1(name)))
        return *found;
    throw std::runtime_error(std::string("no control ") + name);
}

// Shows the board on the folder and works it; what `use` throws is thrown on.
void withBoard(const QString& folder, const std::function<void(Tallyroom&)>& use) {
    const HostContext context = hostOf(folder);
    Tallyroom window(context);
    std::exception_ptr failure;
    QTimer::singleShot(0, &window, [&] {
        try {
            use(window);
        } catch (...) {
            failure = std::current_exception();
        }
        child<QPushButton>(window, "Command1").click();
    });
    window.showModally();
    if (failure)
        std::rethrow_exception(failure);
}

// All optional columns, and the ordering of the demonstration data that sorts by total overtime.
void showEverything(Tallyroom& window) {
    for (const char* option : {"mnuPos", "mnuSenNum", "mnuBreakOut", "mnuAltPhone", "mnuCellPhone",
                               "mnuPager", "MnuOrder_3"}) {
        auto& action = child<QAction>(window, option);
        if (!action.isChecked()) // remembered from the run before
            action.trigger();
    }
}

class BareModel : public QAbstractTableModel {
public:
    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
    }
    int columnCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() || m_rows.empty() ? 0 : static_cast<int>(m_rows.front().size());
    }
    QVariant data(const QModelIndex& index, int role) const override {
        if (role != Qt::DisplayRole)
            return {};
        return m_rows[static_cast<std::size_t>(index.row())][index.column()];
    }
    void setRows(std::vector<QStringList> rows) {
        beginResetModel();
        m_rows = std::move(rows);
        endResetModel();
    }
    QStringList firstColumn() const {
        QStringList result;
        for (const QStringList& row : m_rows)
            result << row.front();
        return result;
    }

private:
    std::vector<QStringList> m_rows;
};

std::vector<QStringList> sortedRows(const QString& folder) {
    Plain connection(fileIn(folder, "vrlxdb01.mdb"));
    PlainStatement query(
        connection,
        "SELECT emp_code, emp_name, emp_dept, Qual_Code, phone, altphone, cellphone, pager, "
        "sendate, Seniority, T15Hours, T20Hours, T15Accepted, T20Accepted, T15Declined, "
        "T20Declined, TotalOT1 FROM tlyrTemp ORDER BY TotalOT1, sendate");
    std::vector<QStringList> rows;
    while (query.next()) {
        QStringList cells;
        for (int column = 0; column < sqlite3_column_count(query.handle()); ++column)
            cells << query.text(column);
        rows.push_back(std::move(cells));
    }
    return rows;
}

QStringList codesOf(const Grid& grid) {
    QStringList result;
    for (int row = 1; row < grid.rows(); ++row)
        result << grid.text(row, 0);
    return result;
}

// From the call to the first painted frame of a new top-level window.
class FirstFrame : public QObject {
public:
    FirstFrame() {
        m_timer.start();
        qApp->installEventFilter(this);
    }
    double shown = 0;   // seconds until the window is about to show
    double painted = 0; // until its first frame is painted

protected:
    // A window is painted while it handles its first exposure.
    bool eventFilter(QObject* object, QEvent* event) override {
        if (event->type() == QEvent::Show && qobject_cast<QMainWindow*>(object) && shown == 0)
            shown = now();
        if (event->type() != QEvent::Expose || painted != 0)
            return false;
        qApp->removeEventFilter(this);
        QCoreApplication::sendEvent(object, event);
        painted = now();
        for (QWidget* window : QApplication::topLevelWidgets())
            QTimer::singleShot(0, window, [window] { leave(*window); });
        return true;
    }

private:
    double now() const { return static_cast<double>(m_timer.nsecsElapsed()) / 1e9; }
    static void leave(QWidget& window) {
        if (auto* exit = window.findChild<QPushButton*>(QStringLiteral("Command1")))
            exit->click();
        else
            window.close();
    }
    QElapsedTimer m_timer;
};

void openBoard(const QString& folder, FirstFrame& frame) {
    const HostContext given = hostOf(folder);
    HostContext context;
    const ObjectRef entry = makeObject<TLYR>(context);
    const VariantArray values{{Variant(given.DataPath), Variant(given.BucketForm),
                               Variant(given.DatePickerForm), Variant(given.HostMenuForm),
                               Variant(given.SplashPicture), Variant(u"Ann")},
                              1,
                              1};
    entry.call(QStringLiteral("TLYRShow"), {Variant(values)});
    if (frame.painted == 0)
        throw std::runtime_error("the board was not painted");
}

// How many controls of each kind a window has.
struct Controls {
    int labels = 0;
    int edits = 0;
    int buttons = 0;
    int others = 0; // the grid and the list
    int menus = 0;
    int entries = 0;
};

Controls controlsOf(const QWidget& window) {
    const auto count = [](const auto& found) { return static_cast<int>(found.size()); };
    return {count(window.findChildren<QLabel*>()),      count(window.findChildren<QLineEdit*>()),
            count(window.findChildren<QPushButton*>()), 2,
            count(window.findChildren<QMenu*>()),       count(window.findChildren<QAction*>())};
}

template<class T>
void place(QWidget* parent, int count) {
    for (int at = 0; at < count; ++at)
        (new T(parent))->move(at * 80, at * 20);
}

void openEmpty(const Controls& controls, QSize size, FirstFrame& frame) {
    QMainWindow window;
    window.resize(size);
    window.setCentralWidget(new QWidget);
    place<QLabel>(window.centralWidget(), controls.labels);
    place<QLineEdit>(window.centralWidget(), controls.edits);
    place<QPushButton>(window.centralWidget(), controls.buttons);
    place<QTableView>(window.centralWidget(), controls.others);
    for (int menu = 0; menu < controls.menus; ++menu)
        window.menuBar()->addMenu(QStringLiteral("Menu"));
    for (int entry = controls.menus; entry < controls.entries; ++entry)
        window.menuBar()->actions().front()->menu()->addAction(QStringLiteral("Entry"));
    window.show();
    while (frame.painted == 0)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

} // namespace

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
        const auto firstUpdate = [&] { // what was measured goes with the widget
            delete child<QWidget>(window, "Picture1").findChild<KnownWidths*>();
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

void openingTheWindow() {
    const QString folder = keptFolder(300, 365);
    Controls controls;
    QSize size;
    withBoard(folder, [&](Tallyroom& window) {
        controls = controlsOf(window);
        size = window.size();
    });
    std::vector<double> loads;
    const auto board = [&] {
        FirstFrame frame;
        openBoard(folder, frame);
        loads.push_back(frame.shown);
        return frame.painted;
    };
    const auto empty = [&] {
        FirstFrame frame;
        openEmpty(controls, size, frame);
        return frame.painted;
    };
    const Comparison times = inTurns(15, board, empty, [] {});
    printRow("5 opening the window on 300 employees", times, 3.0);
    const double load = median(loads);
    std::printf("    of which loading %.1f ms, showing and painting %.1f ms\n", load * 1e3,
                (times.product - load) * 1e3);
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
