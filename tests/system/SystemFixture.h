// The built module in the stand-in host, worked through its windows.
#pragma once

#include "host/Host.h"
#include "tests/host/HostDataFolder.h"
#include "tests/support/DataFolder.h"
#include "tests/support/DialogScript.h"
#include "tests/support/Printing.h"

#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QTableView>
#include <QTest>

namespace tallyroom {

// The board's classes belong to the module, so the tests know its widgets as Qt's own classes only.
class SystemTest : public testing::Test {
protected:
    explicit SystemTest(bool firstRun)
        : data([firstRun](host::DemoSettings& settings) {
              settings.employees = 12;
              settings.firstRun = firstRun;
          }) {}

    // Opens the board as the user; `use` works it before it is left by "E&xit <<".
    void openBoard(const QString& user, const std::function<void(QWidget&)>& use) {
        host::Options options;
        options.dataFolder = data.path();
        options.user = user;
        options.moduleFile = QStringLiteral(TALLYROOM_MODULE);
        host::Host running(options);
        script.expectWindow(u"Tallyroom", [use](QWidget& board) {
            use(board);
            clickButton(board, u"Command1");
        });
        running.callEntry(QStringLiteral("TLYRShow"));
    }

    static QTableView& grid(QWidget& window) { return child<QTableView>(window, u"Grid"); }
    static QString cell(QWidget& window, int row, QStringView heading) {
        const QAbstractItemModel* model = grid(window).model();
        for (int column = 0; column < model->columnCount(); ++column) {
            if (model->headerData(column, Qt::Horizontal).toString() == heading)
                return model->index(row, column).data().toString();
        }
        ADD_FAILURE() << "no column " << heading.toString().toStdString();
        return {};
    }
    // Row of an employee on the board, counted from 0.
    static int rowOf(QWidget& board, const QString& code) {
        for (int row = 0; row < grid(board).model()->rowCount(); ++row) {
            if (cell(board, row, u"Code") == code)
                return row;
        }
        ADD_FAILURE() << code.toStdString() << " is not on the board";
        return 0;
    }

    static void type(QWidget& window, QStringView box, QStringView text) {
        auto& edit = child<QLineEdit>(window, box);
        EXPECT_TRUE(edit.isEnabled()) << edit.objectName().toStdString();
        edit.clear();
        QTest::keyClicks(&edit, text.toString());
    }
    // Chooses the entry that starts with the code.
    static void choose(QWidget& window, QStringView list, QStringView code) {
        auto& combo = child<QComboBox>(window, list);
        combo.setCurrentIndex(combo.findText(code.toString(), Qt::MatchStartsWith));
        EXPECT_TRUE(combo.currentText().startsWith(code));
    }
    // Clicks the employee's row and answers with the pop-up menu.
    static void answer(QWidget& board, const QString& code, QStringView entry) {
        QTableView& table = grid(board);
        const QModelIndex row = table.model()->index(rowOf(board, code), 0);
        table.scrollTo(row);
        const QPoint place = table.visualRect(row).center();
        QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, place);
        QTest::mouseClick(table.viewport(), Qt::RightButton, {}, place);
        auto& popup = child<QMenu>(board, u"mnuPopup");
        auto& action = child<QAction>(board, entry);
        EXPECT_TRUE(popup.isVisible() && action.isEnabled()) << action.objectName().toStdString();
        QTest::mouseClick(&popup, Qt::LeftButton, {}, popup.actionGeometry(&action).center());
    }

    QStringList rows(const char16_t* file, QStringView sql) const {
        return textsOf(*data.open(QString::fromUtf16(file))
                            ->openRecordset(sql.toString(), RecordsetType::Snapshot));
    }
    // The answers that stand in the host's time history.
    QStringList history() const {
        return rows(u"bcx.mdb",
                    u"Select [thist_emp], [shift_date], [thist_attend_code], [tlyrAccepted], "
                    u"[tlyrAccepted2], [tlyrDeclined], [tlyrDeclined2] from [TimeHistory] where "
                    u"[tlyrAccepted] <> NULL or [tlyrAccepted2] <> NULL or [tlyrDeclined] <> NULL "
                    u"or [tlyrDeclined2] <> NULL;");
    }
    QStringList audit() const {
        return rows(
            u"aidb01.mdb",
            u"Select [User], [Emp_Code], [Date], [Action], [OT], [tHistField] from [TLYR_Audit];");
    }

    host::HostDataFolder data;
    DialogScript script;
};

} // namespace tallyroom
