#include "host/BoardPicture.h"
#include "host/ExitCodes.h"

#include "common/TextTableModel.h"
#include "host/KeptMemory.h"
#include "store/FormOptionsTable.h"
#include "tests/host/HostDataFolder.h"

#include <QEventLoop>
#include <QMessageBox>
#include <QPushButton>
#include <QTableView>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace tallyroom::host {
namespace {

// A window that looks like the board from outside.
class FakeBoard : public QWidget {
public:
    FakeBoard() {
        setObjectName(QStringLiteral("Tallyroom"));
        m_table.setObjectName(QStringLiteral("Grid"));
        m_exit.setObjectName(QStringLiteral("Command1"));
        m_model.setTable(
            {{{QStringLiteral("Code")}, {QStringLiteral("Total"), CellAlignment::Right}},
             {{QStringLiteral("1"), QStringLiteral("00:30")},
              {QStringLiteral("12345"), QStringLiteral("100:00")}}});
        m_table.setModel(&m_model);
    }

    void showUntilExit() {
        QEventLoop loop;
        connect(&m_exit, &QPushButton::clicked, &loop, &QEventLoop::quit);
        show();
        loop.exec();
    }

    const QTableView& table() const { return m_table; }

private:
    TextTableModel m_model;
    QTableView m_table{this};
    QPushButton m_exit{this};
};

TEST(BoardPicture, TextIsAlignedAsTheTableIs) {
    const FakeBoard board;
    EXPECT_EQ(tableText(board.table()), QStringLiteral("Code    Total\n"
                                                       "1       00:30\n"
                                                       "12345  100:00\n"));
}

TEST(BoardPicture, IsTakenOfThePaintedBoardWhichIsThenClosed) {
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("board.png"));
    const BoardPicture picture(file);
    FakeBoard board;
    board.showUntilExit();
    EXPECT_TRUE(picture.isTaken());
    EXPECT_EQ(QImage(file).size(), board.size());
}

TEST(BoardPicture, WhatWindowsRememberedIsPutBack) {
    const HostDataFolder folder;
    const QString window = QStringLiteral("Tallyroom");
    const struct {
        QString given;
        QString known; // to the add-in
    } users[] = {{QStringLiteral("O'Neil"), QStringLiteral("O'Neil")},
                 {QString(), QStringLiteral("*Master*")}};
    for (const auto& [given, known] : users) {
        FormOptionsTable::write(folder.path(), known, window, QStringLiteral("before"));
        {
            const KeptMemory kept(folder.path(), given);
            FormOptionsTable::write(folder.path(), known, window, QStringLiteral("after"));
            FormOptionsTable::write(folder.path(), known, QStringLiteral("other"), QString());
        }
        EXPECT_EQ(FormOptionsTable::read(folder.path(), known, window), QStringLiteral("before"));
    }
    EXPECT_EQ(folder.hostCount(QStringLiteral("FormOptions")), 2);
}

TEST(BoardPictureDeathTest, AnotherWindowEndsTheProgramWithItsWords) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const QTemporaryDir folder;
    const auto meetBox = [&folder] {
        const BoardPicture picture(folder.filePath(QStringLiteral("box.png")));
        QMessageBox(QMessageBox::NoIcon, QStringLiteral("Title"), QStringLiteral("Set me up"))
            .exec();
    };
    EXPECT_EXIT(meetBox(), testing::ExitedWithCode(exitUnexpectedWindow), "Title\nSet me up");
}

} // namespace
} // namespace tallyroom::host
