// A disk that fails once, at every operation of a command in turn.
#include "tests/canvass/Board.h"
#include "tests/support/FaultyFiles.h"

#include <QApplication>
#include <QPushButton>

using namespace tallyroom;

namespace {

// Answers whatever boxes appear, by Abort or OK, and counts them.
class BoxCounter : public QObject {
public:
    BoxCounter() {
        connect(&m_timer, &QTimer::timeout, this, [this] { press(); });
        m_timer.start(0);
    }
    int count = 0;

private:
    void press() {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box || !box->isVisible())
            return;
        ++count;
        auto* abort = box->button(QMessageBox::Abort);
        (abort ? abort : box->button(QMessageBox::Ok))->click();
    }
    QTimer m_timer;
};

class FaultSweepTest : public testing::Test {
protected:
    FaultSweepTest() {
        folder.addHost(3);
        folder.associateAll();
        folder.addHistory(u"E2", u"1/1/2020", 60, 0);
    }

    QStringList history() const {
        return folder.rows(
            hostFile,
            u"Select [thist_emp], [tlyrAccepted] from [TimeHistory] order by [thist_emp];");
    }
    QStringList audit() const {
        return folder.rows(addInFile,
                           u"Select [Emp_Code], [OT] from [TLYR_Audit] order by [Emp_Code];");
    }

    DataFolder folder;
    FakeHost host;
    FaultyFiles disk;
};

// Opens the board, runs the command with the n-th operation failing for every n, and checks after
// each that the board still works once the disk does.
void sweep(QMainWindow& board, FaultyFiles& disk, const std::function<void()>& command,
           const std::function<void(bool failed)>& check) {
    for (int n = 1;; ++n) {
        BoxCounter boxes;
        disk.failAt(n);
        command();
        const bool reached = disk.operations() >= n;
        EXPECT_EQ(disk.looseRemovals(), 0) << "what is recorded survives a power cut";
        disk.failAt(0);
        EXPECT_LE(boxes.count, 1) << "operation " << n;
        check(boxes.count > 0);
        trigger(board, u"mnuRefresh");
        EXPECT_EQ(boxes.count > 1, false) << "the board works again after " << n;
        EXPECT_EQ(child<Grid>(board, u"Grid").rows(), 4) << n;
        if (!reached)
            return;
        ASSERT_LT(n, 5000);
    }
}

TEST_F(FaultSweepTest, LoadingReportsOnceAndLeavesNoHalfBuiltWindow) {
    const HostContext context = host.context(folder.path());
    for (int n = 1;; ++n) {
        BoxCounter boxes;
        Tallyroom window(context);
        bool shown = false;
        QTimer leave;
        QObject::connect(&leave, &QTimer::timeout, &window, [&] {
            if (QApplication::activeModalWidget() != &window)
                return;
            shown = true;
            child<QPushButton>(window, u"Command1").click();
        });
        leave.start(0);
        disk.failAt(n);
        window.showModally();
        const bool reached = disk.operations() >= n;
        disk.failAt(0);
        EXPECT_LE(boxes.count, 1) << "operation " << n;
        EXPECT_TRUE(shown || boxes.count == 1) << "operation " << n;
        EXPECT_FALSE(window.isVisible());
        EXPECT_EQ(folder.rows(addInFile, u"Select * from [tlyr_assoc];").size(), 1);
        if (!reached)
            break;
        ASSERT_LT(n, 5000);
    }
}

TEST_F(FaultSweepTest, RebuildingAndRecordingSurviveEveryFailure) {
    const HostContext context = host.context(folder.path());
    Tallyroom window(context);
    QTimer::singleShot(0, &window, [&] {
        sweep(
            window, disk, [&] { trigger(window, u"mnuRefresh"); }, [](bool) {});
        QStringList historyBefore = history();
        QStringList auditBefore = audit();
        const auto recordTwo = [&] {
            child<QLineEdit>(window, u"Text1").setText(QStringLiteral("1:00"));
            auto& grid = child<Grid>(window, u"Grid");
            grid.selectionModel()->select(
                QItemSelection(grid.model()->index(0, 0), grid.model()->index(1, 0)),
                QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
            child<QAction>(window, u"mnuAccept").trigger();
        };
        sweep(window, disk, recordTwo, [&](bool failed) {
            const auto newHistory = history().size() - historyBefore.size();
            const auto newAudit = audit().size() - auditBefore.size();
            EXPECT_GE(newHistory, newAudit) << "the audit follows the transaction";
            EXPECT_LE(newHistory - newAudit, 1);
            EXPECT_TRUE(failed || newAudit == 2);
            historyBefore = history();
            auditBefore = audit();
        });
        child<QPushButton>(window, u"Command1").click();
    });
    window.showModally();
}

} // namespace
