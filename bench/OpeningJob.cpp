// Opening the board, from the call of the entry class to the first painted frame.
#include "addin/TLYR.h"
#include "bench/BenchData.h"
#include "bench/BoardWindow.h"
#include "bench/Jobs.h"
#include "bench/Measure.h"
#include "bench/PlainBoard.h"

#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QPushButton>
#include <QTableView>
#include <QTimer>
#include <cstdio>
#include <stdexcept>

namespace tallyroom::bench {

namespace {

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

// `fill` gets the window before it shows.
void openPlain(const Controls& controls, QSize size, FirstFrame& frame,
               const std::function<void(QMainWindow&)>& fill) {
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
    fill(window);
    window.show();
    while (frame.painted == 0)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

// The two sides of the job, on one folder.
class Opening {
public:
    Opening() {
        withBoard(m_folder, [this](Tallyroom& window) {
            m_controls = controlsOf(window);
            m_size = window.size();
        });
    }

    double board() {
        FirstFrame frame;
        openBoard(m_folder, frame);
        m_loads.push_back(frame.shown);
        return frame.painted;
    }

    double empty() const {
        FirstFrame frame;
        openPlain(m_controls, m_size, frame, [](QMainWindow&) {});
        return frame.painted;
    }

    // The same window with the same figures in it.
    double counted() const {
        FirstFrame frame;
        BareModel model;
        openPlain(m_controls, m_size, frame, [&](QMainWindow& window) {
            PlainBoard(m_folder).write(m_period);
            model.setRows(sortedRows(m_folder));
            window.findChild<QTableView*>()->setModel(&model);
        });
        return frame.painted;
    }

    double medianLoad() const { return median(m_loads); }

private:
    QString m_folder = keptFolder(300, 365);
    std::optional<TotallingPeriod> m_period = TotallingPeriod::read(m_folder);
    Controls m_controls;
    QSize m_size;
    std::vector<double> m_loads;
};

} // namespace

void openingTheWindow() {
    Opening opening;
    const auto board = [&] { return opening.board(); };
    const auto empty = [&] { return opening.empty(); };
    const Comparison times = inTurns(15, board, empty, [] {});
    printRow("5 opening the window on 300 employees", times, 3.0);
    const double load = opening.medianLoad();
    std::printf("    of which loading %.1f ms, showing and painting %.1f ms\n", load * 1e3,
                (times.product - load) * 1e3);
    printRow("5 likewise beside a window with the same figures",
             inTurns(
                 15, board, [&] { return opening.counted(); }, [] {}),
             3.0);
    const auto firstBoard = [&] {
        forgetWidths();
        return opening.board();
    };
    printRow("5 likewise the first time, with all texts to measure",
             inTurns(15, firstBoard, empty, [] {}), 3.0);
}

} // namespace tallyroom::bench
