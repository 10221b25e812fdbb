#include "host/screens/ReportWait.h"
#include "host/screens/frmOvertime.h"
#include "reports/CheckedData.h"
#include "tests/host/HostDataFolder.h"
#include "tests/support/DialogScript.h"

#include <QClipboard>
#include <QComboBox>
#include <QDateEdit>
#include <QFile>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>
#include <QTest>
#include <gtest/gtest.h>

namespace tallyroom::host {
namespace {

class ReportScreensTest : public testing::Test {
protected:
    ReportScreensTest() {
        m_window = std::make_unique<frmOvertime>(
            ScreenContext{m_database, m_data, m_folder.path(), QStringLiteral("jo")}, nullptr);
        m_window->show();
        m_window->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(m_window.get()));
    }

    QAbstractItemModel& rows() { return *child<QTableView>(*m_window, u"Grid").model(); }
    QString cell(int row, int column) { return rows().index(row, column).data().toString(); }

    void clickHeading(int column) {
        QHeaderView& header = *child<QTableView>(*m_window, u"Grid").horizontalHeader();
        QTest::mouseClick(header.viewport(), Qt::LeftButton, Qt::NoModifier,
                          {header.sectionViewportPosition(column) + 5, header.height() / 2});
    }

    void choose(QStringView box, const QString& entry) {
        auto& choices = child<QComboBox>(*m_window, box);
        choices.setCurrentIndex(choices.findText(entry));
        EXPECT_EQ(choices.currentText(), entry);
    }

    QString exported() {
        const QTemporaryDir folder;
        const QString name = folder.filePath(QStringLiteral("list.csv"));
        m_script.expectWindow(u"ExportFile", [&](QWidget& dialog) {
            child<QLineEdit>(dialog, u"fileNameEdit").setText(name);
            qobject_cast<QDialog*>(&dialog)->accept();
        });
        clickButton(*m_window, u"Export");
        QFile file(name);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return QString::fromUtf8(file.readAll());
    }

    HostDataFolder m_folder;
    std::shared_ptr<Database> m_database = Workspace::openHostOptions(m_folder.path());
    HostData m_data = readHostData(*m_database);
    DialogScript m_script;
    std::unique_ptr<frmOvertime> m_window;
};

TEST_F(ReportScreensTest, EverybodyIsListedSortedCopiedAndExportedAsShown) {
    child<QRadioButton>(*m_window, u"ByEmployee").setChecked(true);
    const int people = static_cast<int>(m_data.employees.size());
    ASSERT_EQ(rows().rowCount(), people + 1);
    const int total = rows().columnCount() - 1;
    for (const bool isDescending : {false, true}) {
        clickHeading(total);
        for (int row = 1; row < people; ++row)
            EXPECT_LE(cell(isDescending ? row : row - 1, total),
                      cell(isDescending ? row - 1 : row, total));
        EXPECT_EQ(cell(people, 1), QStringLiteral("Total"));
    }
    const QString first = cell(0, 0);
    EXPECT_NE(first, m_data.employees.front().code);
    clickButton(*m_window, u"Copy");
    const QStringList copied = QApplication::clipboard()->text().split(QLatin1Char('\n'));
    EXPECT_EQ(copied.size(), people + 3); // headings, sums and the end
    EXPECT_TRUE(copied[1].startsWith(first + QLatin1Char('\t')));
    const QStringList lines = exported().split(QStringLiteral("\r\n"));
    EXPECT_EQ(lines.size(), people + 3);
    EXPECT_TRUE(lines[1].startsWith(first + QLatin1Char(',')));
    m_script.expectWindow(u"ReportPreview",
                          [](QWidget& preview) { qobject_cast<QDialog*>(&preview)->reject(); });
    clickButton(*m_window, u"Print");
    clickHeading(total);
    EXPECT_EQ(cell(0, 0), m_data.employees.front().code);
}

TEST_F(ReportScreensTest, TheOutcomeOfACallIsKeptForThePersonWhoIsCurrent) {
    choose(u"Report", QStringLiteral("Call sheet"));
    auto& grid = child<QTableView>(*m_window, u"Grid");
    const struct {
        int outcome;
        Qt::Key letter;
        QString text;
    } calls[] = {{0, Qt::Key_N, QStringLiteral("No answer")},
                 {1, Qt::Key_M, QStringLiteral("Left message")},
                 {2, Qt::Key_V, QStringLiteral("Not available")}};
    for (const auto& call : calls) {
        const int row = call.outcome + 1;
        const QString code = cell(row, 1);
        grid.setCurrentIndex(grid.model()->index(row, 0));
        child<QLineEdit>(*m_window, u"Remark").setText(QStringLiteral("it's late "));
        grid.setFocus();
        QTest::keyClick(&grid, call.letter);
        EXPECT_EQ(m_folder.addInCount(
                      QStringLiteral("[TLYR_Contact] where [Emp_Code] = '%1' and [Outcome] = %2 "
                                     "and [User] = 'jo' and [Remark] = \"it's late\"")
                          .arg(code)
                          .arg(call.outcome)),
                  1);
        EXPECT_EQ(grid.currentIndex().row(), row);
        EXPECT_TRUE(cell(row, 6).startsWith(call.text)) << cell(row, 6).toStdString();
    }
    EXPECT_EQ(m_folder.addInCount(QStringLiteral("[TLYR_Contact]")), 3);
    m_folder.open(QStringLiteral("aidb01.mdb"))
        ->execute(QStringLiteral("Drop Table [TLYR_Contact];"));
    m_script.expectBox(QStringLiteral("Error 3192\n\nThis data has no place for what comes of "
                                      "calls. \"brightclock --upgrade\" adds it."),
                       QMessageBox::Ok, QMessageBox::Critical, QStringLiteral("Brightclock"));
    clickButton(*m_window, u"NoAnswer");
}

TEST_F(ReportScreensTest, WhatIsAskedWronglyIsSaidAndNobodyIsCalled) {
    choose(u"Report", QStringLiteral("Call sheet"));
    EXPECT_FALSE(child<QRadioButton>(*m_window, u"ByEmployee").isVisible());
    child<QLineEdit>(*m_window, u"Hours").setText(QStringLiteral("eight"));
    clickButton(*m_window, u"Refresh");
    EXPECT_EQ(child<QPlainTextEdit>(*m_window, u"Words").toPlainText(),
              QStringLiteral("\"eight\" is no amount from 0:01 to 24:00 hours."));
    EXPECT_EQ(child<QLabel>(*m_window, u"Count").text(), QString());
    EXPECT_FALSE(child<QPushButton>(*m_window, u"NoAnswer").isEnabled());
    const QDate first = child<QDateEdit>(*m_window, u"FromDate").date();
    choose(u"Report", QStringLiteral("Checks"));
    EXPECT_EQ(child<QDateEdit>(*m_window, u"ToDate").date(),
              recordingDays(*m_folder.open(QStringLiteral("aidb01.mdb"))).to);
    choose(u"Report", QStringLiteral("Overtime"));
    EXPECT_EQ(child<QDateEdit>(*m_window, u"FromDate").date(), first);
    EXPECT_TRUE(child<QRadioButton>(*m_window, u"ByEmployee").isVisible());
    EXPECT_GT(rows().rowCount(), 1);
}

TEST_F(ReportScreensTest, ALongReportCanBeCancelled) {
    ReportWait wait(m_window.get());
    m_script.expectWindow(u"ReportProgress",
                          [](QWidget& dialog) { dialog.findChild<QPushButton*>()->click(); });
    int done = 0;
    while (wait.goesOn(done % 100, 100))
        ++done;
    EXPECT_GT(done, 1);
}

} // namespace
} // namespace tallyroom::host
